// The sound thread, on a machine with a loudspeaker or without one.
#include "vork2d/v5/ThreadSoundMachine.h"

#include "support/LogCapture.h"
#include "vork2d/v5/sounds.h"

#include <QString>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using vork2d::v5::ThreadSoundMachine;
using Texts = std::vector<std::string>;

/// Lets a test wait for a line that another thread logs.
class LineWatch final : public ze::log::LogAppender {
public:
    LineWatch() {
        set_enabled(true);
        ze::log::add_log_appender(this);
    }
    LineWatch(const LineWatch&) = delete;
    LineWatch& operator=(const LineWatch&) = delete;
    ~LineWatch() override { ze::log::remove_log_appender(this); }

    void log_string(unsigned, ze::log::LOG_LEVEL, const char* text) override {
        const std::lock_guard lock(mutex);
        lines.emplace_back(text);
        condition.notify_all();
    }

    /// True as soon as the line has come so often; false when it does not come in time.
    [[nodiscard]] bool wait_for(const std::string& line, long times,
                                std::chrono::milliseconds limit) {
        std::unique_lock lock(mutex);
        return condition.wait_for(lock, limit, [this, &line, times] {
            return std::count(lines.begin(), lines.end(), line) >= times;
        });
    }

private:
    std::mutex mutex;
    std::condition_variable condition;
    Texts lines;
};

constexpr std::chrono::seconds LIMIT{20};
constexpr std::chrono::milliseconds PATIENCE{500};

class ThreadSoundMachineTest : public testing::Test {
protected:
    test::LogCapture log;
    LineWatch watch;

    /// A machine that plays the sound. A request in the very moment in which the thread turns to
    /// wait is seen only with the next change of the flags, so that this may take a second machine.
    std::unique_ptr<ThreadSoundMachine> machine_that_plays(const QString& path) {
        for (long attempt = 1; attempt <= 10; ++attempt) {
            auto machine = std::make_unique<ThreadSoundMachine>();
            machine->start();
            if (!watch.wait_for("LAB 1", attempt, LIMIT)) {
                return nullptr;
            }
            machine->play_sound(path);
            if (watch.wait_for("LAB 3", 1, PATIENCE)) {
                return machine;
            }
        }
        return nullptr;
    }
};

TEST_F(ThreadSoundMachineTest, a_machine_that_never_started_ends_at_once) {
    { ThreadSoundMachine machine; }
    EXPECT_EQ(log.lines(), Texts{"ThreadSoundMachine::stop_machine"});
}

TEST_F(ThreadSoundMachineTest, a_waiting_machine_ends_with_its_owner) {
    {
        ThreadSoundMachine machine;
        machine.start();
        ASSERT_TRUE(watch.wait_for("LAB 1", 1, LIMIT));
    }
    EXPECT_EQ(log.lines(), (Texts{"LAB 1", "ThreadSoundMachine::stop_machine", "LAB 2", "BREAK"}));
}

TEST_F(ThreadSoundMachineTest, a_stopped_machine_ends_by_itself) {
    ThreadSoundMachine machine;
    machine.start();
    ASSERT_TRUE(watch.wait_for("LAB 1", 1, LIMIT));
    do {
        machine.stop_machine();
    } while (!machine.wait(20));
    EXPECT_TRUE(machine.isFinished());
}

TEST_F(ThreadSoundMachineTest, a_request_is_logged_three_times) {
    {
        ThreadSoundMachine machine;
        machine.play_sound(QStringLiteral(":/a.wav"));
    }
    EXPECT_EQ(log.lines_with_level(), (Texts{"DEB ThreadSoundMachine::play_sound <<<:/a.wav>>>",
                                             "DEB  ThreadSoundMachine::play_sound <<<:/a.wav>>>",
                                             "DEB   ThreadSoundMachine::play_sound <<<:/a.wav>>>",
                                             "DEB ThreadSoundMachine::stop_machine"}));
}

TEST_F(ThreadSoundMachineTest, a_request_wakes_the_thread_and_the_next_one_is_awaited) {
    const auto machine = machine_that_plays(vork2d::v5::sounds::WALL_HIT);
    ASSERT_NE(machine, nullptr);
    ASSERT_TRUE(watch.wait_for("outta loop", 1, LIMIT));
    const Texts before = log.lines();
    const auto wakeUps = std::count(before.begin(), before.end(), "LAB 2");
    ASSERT_TRUE(watch.wait_for("LAB 1", wakeUps + 1, LIMIT));
    const Texts lines = log.lines();
    EXPECT_EQ(Texts(std::find(lines.begin(), lines.end(), "LAB 3"), lines.end()),
              (Texts{"LAB 3", "LAB 4", "NOT PLAYING", "WANT PLAY", "PLAY", "outta loop", "LAB 1"}));
}

TEST_F(ThreadSoundMachineTest, a_missing_file_is_reported_and_the_thread_goes_on) {
    log.expect_error("pEffect->status() == QSoundEffect::Error");
    const auto machine = machine_that_plays(QStringLiteral(":/no/such.wav"));
    ASSERT_NE(machine, nullptr);
    ASSERT_TRUE(watch.wait_for("outta loop", 1, LIMIT));
    EXPECT_TRUE(machine->isRunning());
}

TEST_F(ThreadSoundMachineTest, the_owner_may_go_while_a_sound_plays) {
    auto machine = machine_that_plays(vork2d::v5::sounds::POINT_WON);
    ASSERT_NE(machine, nullptr);
    machine.reset();
    EXPECT_TRUE(watch.wait_for("outta loop", 1, LIMIT));
}

struct UrlRow {
    QString path, url;
};

TEST_F(ThreadSoundMachineTest, a_path_becomes_the_text_of_a_url) {
    const ThreadSoundMachine machine;
    const UrlRow rows[] = {
        {QStringLiteral(":/wb/a.wav"), QStringLiteral("qrc:/wb/a.wav")},
        {QStringLiteral("/music/a.wav"), QStringLiteral("file:///music/a.wav")},
        {QStringLiteral("a.wav"), QStringLiteral("file:a.wav")},
    };
    for (const UrlRow& row : rows) {
        EXPECT_EQ(machine.to_sound_url(row.path), row.url);
    }
}

}  // namespace
