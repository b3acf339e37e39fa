// fire_event beside a Qt signal with directly connected lambdas.

#include "ze/log/log.h"
#include "ze/tools/Listener.h"

#include "Sender.h"

#include <string>

#include <benchmark/benchmark.h>

namespace {

void fire_listener(benchmark::State& state, int callbacks) {
    ze::log::configure();
    ze::log::set_log_level(ze::log::ERROR);  // the end of a listener is a log line
    ze::Listener<int> listener;
    long long sum = 0;
    for (int i = 0; i < callbacks; ++i) {
        listener.append(std::to_string(i), [&sum](const int& value) { sum += value; });
    }
    for (auto _ : state) {
        listener.fire_event(1, ze::FIRE_DIRECT);
        benchmark::ClobberMemory();
    }
    benchmark::DoNotOptimize(sum);
}

void fire_signal(benchmark::State& state, int callbacks) {
    Sender sender;
    long long sum = 0;
    for (int i = 0; i < callbacks; ++i) {
        QObject::connect(&sender, &Sender::fired, &sender, [&sum](int value) { sum += value; });
    }
    for (auto _ : state) {
        Q_EMIT sender.fired(1);
        benchmark::ClobberMemory();
    }
    benchmark::DoNotOptimize(sum);
}

BENCHMARK_CAPTURE(fire_listener, , 0)->Name("fire_event_empty/ours");
BENCHMARK_CAPTURE(fire_signal, , 0)->Name("fire_event_empty/peer");
BENCHMARK_CAPTURE(fire_listener, , 1)->Name("fire_event_1/ours");
BENCHMARK_CAPTURE(fire_signal, , 1)->Name("fire_event_1/peer");
BENCHMARK_CAPTURE(fire_listener, , 8)->Name("fire_event_8/ours");
BENCHMARK_CAPTURE(fire_signal, , 8)->Name("fire_event_8/peer");
// Alone, to see that the cost grows with the number of callbacks and no faster.
BENCHMARK_CAPTURE(fire_listener, , 64)->Name("fire_event_64/ours");
BENCHMARK_CAPTURE(fire_signal, , 64)->Name("fire_event_64/peer");

}  // namespace
