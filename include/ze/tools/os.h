// What the program asks of its platform. The plain tests are fixed when the program is built; only
// the queries of the screen and of the input devices look at the running system.
#pragma once

#include <QSize>
#include <QString>

#include <string>

namespace ze::os {

[[nodiscard]] bool is_mac() noexcept;
[[nodiscard]] bool is_linux() noexcept;  ///< a desktop Linux; Android is none
[[nodiscard]] bool is_windows() noexcept;
[[nodiscard]] bool is_android() noexcept;
[[nodiscard]] bool is_wasm() noexcept;
[[nodiscard]] bool is_sandboxed() noexcept;  ///< the platform may end the program when it is hidden
[[nodiscard]] bool is_desktop() noexcept;
[[nodiscard]] bool is_mobile() noexcept;
[[nodiscard]] bool is_64_bit() noexcept;
[[nodiscard]] bool is_32_bit() noexcept;
[[nodiscard]] bool is_window_based_platform() noexcept;  ///< programs have movable windows

/// True when a touch screen is connected.
[[nodiscard]] bool is_touch_device();

/// True when the primary screen's smaller side is below 600 pixels; false without a screen.
[[nodiscard]] bool is_small_device();

/// "Linux" on every platform, Windows included: a text to show, not to decide by.
[[nodiscard]] std::string get_os_name();
[[nodiscard]] QString get_os_name_qs();

/// 32 or 64.
[[nodiscard]] unsigned get_os_bit_system() noexcept;

/// The file name of the running program as it was started, without its folder.
[[nodiscard]] std::string get_program_name();
[[nodiscard]] QString get_program_name_qs();

/// The primary screen's size in device-independent pixels; `ok` is false and the size (-1, -1)
/// without a screen, and where the platform names a negative size.
[[nodiscard]] QSize get_view_port_size(bool& ok);
[[nodiscard]] QSize primary_screen_size();

/// The smaller side of the primary screen, -1 without one.
[[nodiscard]] int smallest_width_or_height();

}  // namespace ze::os
