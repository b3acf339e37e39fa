// A std::function whose copy is cheap where the callable is: a small lambda that captures
// references and plain values is copied as bytes. Everything else is kept in a std::function.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <functional>
#include <new>
#include <type_traits>
#include <utility>

namespace ze {

template <typename... Args>
class Callback {
public:
    using Function = std::function<void(Args...)>;

    Callback() = default;

    /// Takes what a std::function takes; an empty function and null give an empty callback.
    template <typename F>
    requires(!std::same_as<F, Callback> && std::constructible_from<Function, F>)
        Callback(F callable) {  // NOLINT(google-explicit-constructor): a lambda becomes one where
                                // it is handed over
        if constexpr (IS_SMALL<F>) {
            new (small.bytes.data()) F(callable);
            small.call = &call_small<F>;
        } else {
            large = std::move(callable);
        }
    }

    /// Runs a copy of the callable, so that this object may be assigned or destroyed meanwhile.
    /// Empty: nothing.
    void run_copy(Args... args) const {
        if (small.call != nullptr) {
            Small copy = small;
            copy.call(copy.bytes.data(), args...);
        } else if (const Function copy = large) {
            copy(args...);
        }
    }

private:
    static constexpr std::size_t CAPACITY = 2 * sizeof(void*);

    template <typename F>
    static constexpr bool IS_SMALL = std::is_class_v<F>&& std::is_trivially_copyable_v<F> &&
                                     sizeof(F) <= CAPACITY && alignof(F) <= alignof(void*);

    struct Small {
        alignas(void*) std::array<std::byte, CAPACITY> bytes{};
        void (*call)(std::byte* callable, Args... args) = nullptr;
    };

    template <typename F>
    static void call_small(std::byte* callable, Args... args) {
        (*std::launder(reinterpret_cast<F*>(callable)))(args...);
    }

    Small small;
    Function large;
};

}  // namespace ze
