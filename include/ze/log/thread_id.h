// Small numbers for threads, in the order in which they first asked for one.
#pragma once

namespace ze {

/// The number of this thread, from 1 on.
[[nodiscard]] unsigned get_fast_thread_id() noexcept;
[[nodiscard]] unsigned get_thread_id() noexcept;

/// True on the thread that configured the log.
[[nodiscard]] bool is_main_thread() noexcept;
/// Makes the calling thread the main thread; log::configure calls it.
void set_main_thread() noexcept;

/// Mixes 64 bits into a number from 0 to 9999.
[[nodiscard]] unsigned reduce_id_len(unsigned long long id) noexcept;

/// Sleeps that many milliseconds; zero, or negative as a signed number, does nothing.
void gSleep(unsigned long long ms);

}  // namespace ze
