// The streams that have got output since the loop last waited. What one turn of the loop hands to a
// stream leaves in one TLS record and one system call.
#pragma once

#include <vector>

namespace relay {

class TlsStream;

class Turn {
public:
    void add(TlsStream& stream) { streams_.push_back(&stream); }
    void forget(const TlsStream& stream) noexcept;

    /// Writes what they have; called whenever a stream runs out of input, and after a timer.
    void flush();

private:
    std::vector<TlsStream*> streams_;
    std::vector<TlsStream*> flushing_;  ///< kept for its storage
};

}  // namespace relay
