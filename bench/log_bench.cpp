// The log beside spdlog: a call that the level drops, a line with all columns kept in memory, a
// line that the appender drops, and what each further appender adds.

#include "ze/log/LogAppender.h"
#include "ze/log/LogConsole.h"
#include "ze/log/pp.h"

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/base_sink.h>
#include <spdlog/sinks/null_sink.h>
#include <spdlog/spdlog.h>

namespace {

constexpr const char* TEXT = "GWebSocket::on_connected, host:play.vork2d.example";
constexpr std::size_t LINES_KEPT = 4096;

class Lines {
public:
    Lines() { lines.reserve(LINES_KEPT); }
    void keep(std::string line) {
        if (lines.size() == LINES_KEPT) {
            lines.clear();
        }
        lines.push_back(std::move(line));
    }

private:
    std::vector<std::string> lines;
};

class MemoryAppender final : public ze::log::LogAppender {
public:
    MemoryAppender() {
        config.ini();
        set_enabled(true);
    }
    void log_string(unsigned counter, ze::log::LOG_LEVEL level, const char* text) override {
        lines.keep(ze::log::trailler(counter, level, config.logControl) + text);
    }

private:
    Lines lines;
};

class DroppingAppender final : public ze::log::LogAppender {
public:
    DroppingAppender() { set_enabled(true); }
    void log_string(unsigned, ze::log::LOG_LEVEL, const char* text) override {
        benchmark::DoNotOptimize(text);
    }
};

class MemorySink final : public spdlog::sinks::base_sink<std::mutex> {
protected:
    void sink_it_(const spdlog::details::log_msg& message) override {
        spdlog::memory_buf_t line;
        formatter_->format(message, line);
        lines.keep(fmt::to_string(line));
    }
    void flush_() override {}

private:
    Lines lines;
};

// The column that spdlog's patterns lack: the running number.
class NumberColumn final : public spdlog::custom_flag_formatter {
public:
    void format(const spdlog::details::log_msg&, const std::tm&,
                spdlog::memory_buf_t& line) override {
        fmt::format_to(std::back_inserter(line), "{:06d}", ++number);
    }
    [[nodiscard]] std::unique_ptr<custom_flag_formatter> clone() const override {
        return std::make_unique<NumberColumn>();
    }

private:
    unsigned number = 0;
};

class Log {
public:
    Log() {
        ze::log::configure();
        ze::log::remove_log_appender(&ze::log::consoleLogger);
    }
    ~Log() {
        for (const auto& appender : appenders) {
            ze::log::remove_log_appender(appender.get());
        }
    }
    template <typename Appender>
    void add(int count) {
        for (int i = 0; i < count; ++i) {
            appenders.push_back(std::make_unique<Appender>());
            ze::log::add_log_appender(appenders.back().get());
        }
    }

private:
    std::vector<std::unique_ptr<ze::log::LogAppender>> appenders;
};

template <typename Appender, int APPENDERS>
void log_to(benchmark::State& state) {
    Log log;
    log.add<Appender>(APPENDERS);
    for (auto _ : state) {
        ze::pp(TEXT);
    }
}

template <typename Sink, int SINKS>
void spdlog_to(benchmark::State& state) {
    std::vector<spdlog::sink_ptr> all;
    for (int i = 0; i < SINKS; ++i) {
        all.push_back(std::make_shared<Sink>());
    }
    spdlog::logger logger("peer", all.begin(), all.end());
    auto formatter = std::make_unique<spdlog::pattern_formatter>();
    formatter->add_flag<NumberColumn>('N').set_pattern("[%N] [%l] [%H:%M:%S,%e] [%t] %v");
    logger.set_formatter(std::move(formatter));
    for (auto _ : state) {
        logger.info(TEXT);
    }
}

void filtered(benchmark::State& state) {
    const Log log;
    for (auto _ : state) {
        ze::pp_trace(TEXT);
        benchmark::ClobberMemory();
    }
}

void spdlog_filtered(benchmark::State& state) {
    spdlog::logger logger("peer", std::make_shared<spdlog::sinks::null_sink_mt>());
    for (auto _ : state) {
        logger.trace(TEXT);
        benchmark::ClobberMemory();
    }
}

BENCHMARK(filtered)->Name("pp_filtered/ours");
BENCHMARK(spdlog_filtered)->Name("pp_filtered/peer");
BENCHMARK_TEMPLATE(log_to, MemoryAppender, 1)->Name("log_line_in_memory/ours");
BENCHMARK_TEMPLATE(spdlog_to, MemorySink, 1)->Name("log_line_in_memory/peer");
BENCHMARK_TEMPLATE(log_to, MemoryAppender, 4)->Name("log_line_in_memory_4/ours");
BENCHMARK_TEMPLATE(spdlog_to, MemorySink, 4)->Name("log_line_in_memory_4/peer");
BENCHMARK_TEMPLATE(log_to, DroppingAppender, 1)->Name("log_line_dropped/ours");
BENCHMARK_TEMPLATE(spdlog_to, spdlog::sinks::null_sink_mt, 1)->Name("log_line_dropped/peer");
BENCHMARK_TEMPLATE(log_to, DroppingAppender, 8)->Name("log_line_dropped_8/ours");
BENCHMARK_TEMPLATE(spdlog_to, spdlog::sinks::null_sink_mt, 8)->Name("log_line_dropped_8/peer");

}  // namespace
