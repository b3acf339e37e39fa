#include "ze/qt/event/mod.h"

#include <QInputEvent>

#include <array>
#include <utility>

namespace ze::qt::event::mod {

namespace {

bool has(const QInputEvent* ev, Qt::KeyboardModifiers modifiers) noexcept {
    return ev != nullptr && (ev->modifiers() & modifiers);
}

}  // namespace

bool is_alt(const QInputEvent* ev) noexcept {
    return has(ev, Qt::AltModifier);
}

bool is_ctrl(const QInputEvent* ev) noexcept {
    return has(ev, Qt::ControlModifier);
}

bool is_shift(const QInputEvent* ev) noexcept {
    return has(ev, Qt::ShiftModifier);
}

bool is_any_meta(const QInputEvent* ev) noexcept {
    return has(ev, Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

std::string to_string(const QInputEvent* ev) {
    if (ev == nullptr) {
        return "nullptr";
    }
    using Word = std::pair<Qt::KeyboardModifier, const char*>;
    static constexpr std::array WORDS{Word{Qt::ControlModifier, "CTRL"},
                                      Word{Qt::ShiftModifier, "SHIFT"},
                                      Word{Qt::AltModifier, "ALT"}, Word{Qt::MetaModifier, "META"}};
    std::string text;
    for (const auto& [modifier, word] : WORDS) {
        if (has(ev, modifier)) {
            text += text.empty() ? "" : "+";
            text += word;
        }
    }
    return text.empty() ? "NONE" : text;
}

}  // namespace ze::qt::event::mod
