#include "ze/log/thread_id.h"

#include "ze/tools/clock.h"

#include <atomic>
#include <cstdint>
#include <thread>

namespace ze {

std::atomic<std::uint32_t> g_tid_counter = 1;

namespace {

std::atomic<std::thread::id> mainThread;

}  // namespace

unsigned get_fast_thread_id() noexcept {
    thread_local unsigned number = 0;
    thread_local bool valid = false;
    if (!valid) {
        number = g_tid_counter++;
        valid = true;
    }
    return number;
}

unsigned get_thread_id() noexcept {
    return get_fast_thread_id();
}

bool is_main_thread() noexcept {
    return std::this_thread::get_id() == mainThread;
}

void set_main_thread() noexcept {
    mainThread = std::this_thread::get_id();
}

unsigned reduce_id_len(unsigned long long id) noexcept {
    id ^= id >> 33;
    id *= 0xFF51AFD7ED558CCD;
    id ^= id >> 33;
    id *= 0xC4CEB9FE1A85EC53;
    id ^= id >> 33;
    return static_cast<std::uint32_t>(id) % 10000;
}

void gSleep(unsigned long long ms) {
    time::sleep(ms);
}

}  // namespace ze
