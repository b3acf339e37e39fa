// What the relay says to one client: an answer to its request, then frames. Whatever a client or
// its friend has sent, each byte of it is one that a client can make sense of.
#pragma once

#include "relay/Limits.h"

#include <string>
#include <string_view>

namespace fuzz {

class RelayReader {
public:
    explicit RelayReader(const relay::Limits& limits) : limits_(limits) {}

    /// Aborts where the relay says what it must not say.
    void add(std::string_view bytes);

    /// False within the answer or within a frame.
    [[nodiscard]] bool is_whole() const noexcept { return received_.empty(); }
    /// group:user once the relay has let it in, else empty.
    [[nodiscard]] const std::string& name() const noexcept { return name_; }

private:
    enum class Phase { ANSWER, FRAMES, OVER };

    bool read_answer();
    bool read_frame();
    void on_text(std::string_view text);
    void on_close(std::string_view payload);
    [[nodiscard]] bool is_friend(std::string_view from) const;
    [[nodiscard]] std::size_t number(std::size_t at, std::size_t bytes) const;

    const relay::Limits& limits_;
    Phase phase_ = Phase::ANSWER;
    std::string received_;  ///< and not yet looked at
    std::string name_;
};

}  // namespace fuzz
