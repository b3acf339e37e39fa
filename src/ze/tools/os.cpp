#include "ze/tools/os.h"

#include "ze/tools/convert.h"

#include <QGuiApplication>
#include <QInputDevice>
#include <QScreen>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <string_view>

#if defined(Q_OS_WIN)
#include <windows.h>
#endif

namespace ze::os {

namespace {

#if defined(Q_OS_WIN)
constexpr bool WINDOWS = true;
#else
constexpr bool WINDOWS = false;
#endif

#if defined(Q_OS_MACOS)
constexpr bool MAC = true;
#else
constexpr bool MAC = false;
#endif

#if defined(Q_OS_ANDROID)
constexpr bool ANDROID_DEVICE = true;
#else
constexpr bool ANDROID_DEVICE = false;
#endif

#if defined(Q_OS_IOS)
constexpr bool IOS = true;
#else
constexpr bool IOS = false;
#endif

#if defined(Q_OS_WASM)
constexpr bool WASM = true;
#else
constexpr bool WASM = false;
#endif

#if defined(Q_OS_LINUX)
constexpr bool LINUX = !ANDROID_DEVICE;
#else
constexpr bool LINUX = false;
#endif

constexpr bool MOBILE = ANDROID_DEVICE || IOS;
constexpr unsigned BITS = sizeof(void*) * CHAR_BIT;

#if defined(Q_OS_WIN)
std::filesystem::path program_path() {
    std::wstring buffer(32768, L'\0');  // the longest path that Windows names
    const DWORD length =
        GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    buffer.resize(length);
    return buffer;
}
#else
// The kernel marks the link to a file that was removed or replaced, as an update does with a
// program that runs.
std::filesystem::path without_mark_of_removed(const std::filesystem::path& path) {
    constexpr std::string_view MARK = " (deleted)";
    std::string text = path.string();
    std::error_code error;
    if (text.ends_with(MARK) && !std::filesystem::exists(path, error)) {
        text.resize(text.size() - MARK.size());
    }
    return text;
}

std::filesystem::path program_path() {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path(QCoreApplication::applicationFilePath().toStdString())
                 : without_mark_of_removed(path);
}
#endif

}  // namespace

bool is_mac() noexcept {
    return MAC;
}

bool is_linux() noexcept {
    return LINUX;
}

bool is_windows() noexcept {
    return WINDOWS;
}

bool is_android() noexcept {
    return ANDROID_DEVICE;
}

bool is_wasm() noexcept {
    return WASM;
}

bool is_sandboxed() noexcept {
    return MOBILE || WASM;
}

bool is_desktop() noexcept {
    return !MOBILE && !WASM;
}

bool is_mobile() noexcept {
    return MOBILE;
}

bool is_64_bit() noexcept {
    return BITS == 64;
}

bool is_32_bit() noexcept {
    return BITS == 32;
}

bool is_window_based_platform() noexcept {
    return is_desktop();
}

bool is_touch_device() {
    const QList<const QInputDevice*> devices = QInputDevice::devices();
    return std::any_of(devices.begin(), devices.end(), [](const QInputDevice* device) {
        return device->type() == QInputDevice::DeviceType::TouchScreen;
    });
}

bool is_small_device() {
    constexpr unsigned SMALL_SIDE = 600;
    return static_cast<unsigned>(smallest_width_or_height()) < SMALL_SIDE;
}

std::string get_os_name() {
    return "Linux";
}

QString get_os_name_qs() {
    return convert::to_string(get_os_name());
}

unsigned get_os_bit_system() noexcept {
    return BITS;
}

std::string get_program_name() {
    const std::u8string name = program_path().filename().u8string();
    return {name.begin(), name.end()};
}

QString get_program_name_qs() {
    return convert::to_string(get_program_name());
}

QSize get_view_port_size(bool& ok) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QSize size = screen == nullptr ? QSize(-1, -1) : screen->size();
    ok = size.width() >= 0 && size.height() >= 0;
    return ok ? size : QSize(-1, -1);
}

QSize primary_screen_size() {
    bool ok = false;
    return get_view_port_size(ok);
}

int smallest_width_or_height() {
    const QSize size = primary_screen_size();
    return std::min(size.width(), size.height());
}

}  // namespace ze::os
