#include "Attempts.h"

#include "Session.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace relay {

namespace {

// So that a group costs a bounded memory, whatever is tried at it.
constexpr std::size_t MAX_FAILED = 128;
constexpr std::size_t MAX_KNOWN = 4;
constexpr std::size_t MAX_LINE = 128;

void remember(std::vector<std::string>& keys, const std::string& key, std::size_t most) {
    keys.push_back(key);
    if (keys.size() > most) {
        keys.erase(keys.begin());
    }
}

}  // namespace

Attempts::Attempts(const Limits& limits, TimePoint now) noexcept
    : failures_(TokenBucket::per_minute(limits.failedLoginsPerGroup, now)) {}

void Attempts::know(const std::string& address) {
    if (!knows(address)) {
        remember(known_, address, MAX_KNOWN);
    }
}

bool Attempts::knows(const std::string& address) const noexcept {
    return std::find(known_.begin(), known_.end(), address) != known_.end();
}

Session* Attempts::add(Attempt attempt) {
    const auto former = std::find_if(line_.begin(), line_.end(), [&attempt](const Attempt& other) {
        return other.session->address == attempt.session->address;
    });
    Session* leaver = nullptr;
    if (former != line_.end()) {
        leaver = former->session;
        line_.erase(former);
    }
    line_.push_back(std::move(attempt));
    if (line_.size() > MAX_LINE) {
        const auto worst = std::max_element(line_.rbegin(), line_.rend(),
                                            [this](const Attempt& left, const Attempt& right) {
                                                return count_failures(left) < count_failures(right);
                                            });
        leaver = worst->session;
        line_.erase(std::next(worst).base());
    }
    return leaver;
}

void Attempts::remove(const Session& session) noexcept {
    std::erase_if(line_,
                  [&session](const Attempt& attempt) { return attempt.session == &session; });
}

std::optional<Attempt> Attempts::take(TimePoint now) {
    if (line_.empty() || !failures_.has(1, now)) {
        return std::nullopt;
    }
    auto next = line_.begin();
    std::size_t least = count_failures(*next);
    for (auto other = std::next(next); other != line_.end(); ++other) {
        const std::size_t failures = count_failures(*other);
        if (failures < least || (failures == least && flagNewest_)) {
            next = other;
            least = failures;
        }
    }
    flagNewest_ = !flagNewest_;
    Attempt attempt = std::move(*next);
    line_.erase(next);
    return attempt;
}

void Attempts::fail(const std::string& network, TimePoint now) {
    static_cast<void>(failures_.take(1, now));
    remember(failed_, network, MAX_FAILED);
}

std::size_t Attempts::count_failures(const Attempt& attempt) const noexcept {
    return static_cast<std::size_t>(std::count(failed_.begin(), failed_.end(), attempt.network));
}

}  // namespace relay
