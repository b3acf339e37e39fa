#include "Session.h"

#include <utility>

namespace relay {

namespace {

constexpr double CHAT_PER_SECOND = 1;

TokenBucket bucket(std::size_t perSecond, std::size_t burstSeconds, TimePoint now) noexcept {
    const auto rate = static_cast<double>(perSecond);
    return {rate * static_cast<double>(burstSeconds), rate, now};
}

}  // namespace

Session::Session(Peer& sessionPeer, std::string sessionAddress, const Limits& limits, TimePoint now)
    : peer(sessionPeer),
      address(std::move(sessionAddress)),
      frames(bucket(limits.framesPerSecond, limits.burstSeconds, now)),
      bytes(bucket(limits.bytesPerSecond, limits.burstSeconds, now)),
      chat(static_cast<double>(limits.chatBurst), CHAT_PER_SECOND, now),
      tmEntered(now),
      tmHeard(now),
      tmPinged(now) {}

}  // namespace relay
