// What the kernel is asked for a player's connection.
#pragma once

#include "TlsStream.h"

namespace relay {

/// Sends at once, holds little, and gives up where nothing is acknowledged.
void tune(TlsStream::Socket& socket) noexcept;

}  // namespace relay
