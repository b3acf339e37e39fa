// The identity under which a window's settings are stored. Several windows of one class may be
// open; each has a number of its own, and a number that was given back is given out again first.
#pragma once

#include <QString>

#include <cstddef>
#include <set>

namespace ze::qt {

class BaseWindowClazz {
public:
    BaseWindowClazz() = default;
    virtual ~BaseWindowClazz() = default;
    Q_DISABLE_COPY_MOVE(BaseWindowClazz)

    /// The class name, an underline and the number, such as "CMainWindow_0".
    [[nodiscard]] virtual QString get_complete_name() const = 0;
};

/// A literal as a template argument. N counts the closing zero byte.
template <std::size_t N>
struct FixedString {
    // Not explicit: WindowClazz<"Name"> is to be written with the plain literal.
    consteval FixedString(const char (&literal)[N]) {  // NOLINT(google-explicit-constructor)
        for (std::size_t i = 0; i < N; ++i) {
            text[i] = literal[i];
        }
    }

    char text[N]{};
};

template <FixedString name>
class WindowClazz final : public BaseWindowClazz {
public:
    WindowClazz() = default;
    ~WindowClazz() override {
        if (id >= 0) {
            sFreeIds.insert(id);
        }
    }
    Q_DISABLE_COPY_MOVE(WindowClazz)

    /// Takes the lowest number that no other identity of this class name holds.
    void assign_id() {
        if (sFreeIds.empty()) {
            id = sCounter++;
        } else {
            id = sFreeIds.extract(sFreeIds.begin()).value();
        }
    }

    [[nodiscard]] QString get_complete_name() const override {
        return QString::fromUtf8(name.text) + u'_' + QString::number(id);
    }

private:
    int id = -1;  // until assign_id()

    static inline std::set<int> sFreeIds;
    static inline int sCounter = 0;
};

}  // namespace ze::qt
