// The bits of the field's state: how far the connection has come and whether a rally runs.
#pragma once

#include <string>

namespace vork2d::v4::PLAY_STATE {

/// Value 1 is unused.
enum Type : unsigned {
    CONNECTED1 = 2,  ///< the socket stands and this client is in
    CONNECTED2 = 4,  ///< the second player is there
    RUN = 8,         ///< a rally runs
};

/// The words of the bits that are set, joined by " | "; empty for 0.
[[nodiscard]] std::string to_string(unsigned state);

}  // namespace vork2d::v4::PLAY_STATE
