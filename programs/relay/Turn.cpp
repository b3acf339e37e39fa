#include "Turn.h"

#include "TlsStream.h"

#include <algorithm>

namespace relay {

void Turn::forget(const TlsStream& stream) noexcept {
    std::erase(streams_, &stream);
    std::replace(flushing_.begin(), flushing_.end(), const_cast<TlsStream*>(&stream),
                 static_cast<TlsStream*>(nullptr));
}

void Turn::flush() {
    flushing_.swap(streams_);
    for (std::size_t i = 0; i < flushing_.size(); ++i) {
        if (flushing_[i] != nullptr) {
            flushing_[i]->flush();
        }
    }
    flushing_.clear();
}

}  // namespace relay
