// The file that GSettings keeps: who may read it, and what becomes of one that cannot be read or
// written.
#include "ze/store/GNode.h"
#include "ze/tools/GSettings.h"
#include "ze/tools/GSettingsFileTest.h"

#include "support/LogCapture.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

#include <array>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace test;
using ze::store::GNode;

/// An event loop to write the settings, under the names that they have.
class Application {
public:
    Application() {
        QCoreApplication::setOrganizationName(organisation);
        QCoreApplication::setApplicationName(application);
    }

private:
    const QString organisation = QCoreApplication::organizationName();
    const QString application = QCoreApplication::applicationName();
    int argc = 1;
    std::array<char, 5> name = {'t', 'e', 's', 't', '\0'};
    std::array<char*, 2> argv = {name.data(), nullptr};
    const QCoreApplication app{argc, argv.data()};
};

TEST_F(GSettingsFileTest, is_not_made_by_reading) {
    {
        SettingsStore store;
        store.sync();
    }
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(GSettingsFileTest, is_its_owners_from_the_first_write_on) {
    SettingsStore store;
    store.set(KEY, 1, nullptr);
    store.sync();
    EXPECT_EQ(mode(), 0600u);
    store.set(KEY, 2, nullptr);
    store.sync();
    EXPECT_EQ(mode(), 0600u);
}

TEST_F(GSettingsFileTest, is_its_owners_when_the_last_write_makes_it) {
    { SettingsStore().set(KEY, 1, nullptr); }
    EXPECT_EQ(mode(), 0600u);
    EXPECT_EQ(read_file(), WITH_KEY);
}

TEST_F(GSettingsFileTest, is_its_owners_when_the_event_loop_writes_it) {
    const Application application;
    SettingsStore store;
    store.set(KEY, 1, nullptr);
    QCoreApplication::processEvents();
    EXPECT_EQ(read_file(), WITH_KEY);
    EXPECT_EQ(mode(), 0600u);
}

TEST_F(GSettingsFileTest, is_taken_from_the_others_when_it_is_opened) {
    write_file(WITH_KEY, EVERYBODY);
    ASSERT_EQ(mode(), 0644u);
    SettingsStore store;
    EXPECT_EQ(mode(), 0600u);
    EXPECT_EQ(store.get_int(KEY, 0, nullptr), 1);
}

TEST_F(GSettingsFileTest, is_its_owners_when_it_is_made_again) {
    SettingsStore store;
    store.set(KEY, 1, nullptr);
    store.sync();
    ASSERT_TRUE(QFile::remove(path()));
    store.set(KEY, 2, nullptr);
    store.sync();
    EXPECT_EQ(mode(), 0600u);
}

TEST_F(GSettingsFileTest, stays_read_only_when_its_owner_made_it_so) {
    write_file(WITH_KEY, QFile::ReadOwner | QFile::ReadOther);
    const SettingsStore store;
    EXPECT_EQ(mode(), 0400u);
}

TEST_F(GSettingsFileTest, is_its_owners_after_it_is_cleared) {
    const test::LogCapture log;
    write_file(WITH_KEY, EVERYBODY);
    SettingsStore store;
    store.clear_config();
    EXPECT_EQ(mode(), 0600u);
    EXPECT_EQ(read_file(), QByteArray());
}

struct Damage {
    const char* name;
    QByteArray node;
    std::vector<std::string> errors;
};

TEST_F(GSettingsFileTest, with_a_damaged_node_gives_its_log_line_and_keeps_the_rest) {
    // Each of its own length: QSettings reads a file again only when its size or time has changed,
    // and two rows can fall into one tick of the file system's clock.
    const std::vector<Damage> rows = {
        {"not base64", "?!#", {"from_qstring, base64 decode failed"}},
        {"some other base64", "AAAAAAAAAAA=", {"from_qstring, wrong magic:0"}},
        {"cut in the magic", "R04=", {"from_qstring, failed to read magic"}},
        {"cut behind the magic", "R05PRA==", {"from_qstring, failed to read version"}},
        {"another version", "R05PRAACAAAAAAA=", {"from_qstring, unsupported version:2"}},
        {"a comma", "R05P, !!", {"from_qstring, failed to read magic"}},
    };
    for (const Damage& row : rows) {
        const QByteArray content = "[GApplication]\napp=" + row.node + "\n\n[ui]\ntheme=2\n";
        QFile::remove(path());
        write_file(content, EVERYBODY);
        test::LogCapture log;
        for (const std::string& error : row.errors) {
            log.expect_error(error);
        }
        {
            const SettingsStore store;
            EXPECT_EQ(store.get_app_node(), GNode()) << row.name;
            EXPECT_EQ(store.get_theme(), 2u) << row.name;
        }
        EXPECT_EQ(read_file(), content) << row.name;
    }
}

TEST_F(GSettingsFileTest, that_is_broken_gives_defaults_and_stays_as_it_is) {
    const std::vector<Broken> rows = {
        {"empty", ""},
        {"binary", QByteArray("\x00\xff\x80\x01\n\x7f", 6)},
        {"no key", "=1\n[\n[ui\n"},
        {"words", "this is no settings file\n"},
        {"wrong types", "[ui]\ntheme=green\n[config]\nversion=@Rect(0 0 1 1)\n[log]\nlevel=-1\n"},
        {"a broken byte array", "[log]\nlevel=@ByteArray(\n"},
        {"cut in a value", "[ui]\ntheme=\"2"},
    };
    for (const Broken& row : rows) {
        QFile::remove(path());
        write_file(row.content, EVERYBODY);
        {
            const SettingsStore store;
            EXPECT_TRUE(store.get_theme() == 1u || row.content.endsWith("\"2")) << row.name;
            EXPECT_EQ(store.get_log_level(), 0u) << row.name;
            EXPECT_EQ(store.get_config_version(), 99u) << row.name;
        }
        EXPECT_EQ(read_file(), row.content) << row.name;
    }
}

TEST_F(GSettingsFileTest, that_is_broken_gives_what_can_be_read) {
    write_file("no key and no value\n[ui]\ntheme=2\nalso no value\n[log]\nlevel=3\n", EVERYBODY);
    const SettingsStore store;
    EXPECT_EQ(store.get_theme(), 2u);
    EXPECT_EQ(store.get_log_level(), 3u);
}

TEST_F(GSettingsFileTest, that_is_broken_is_kept_aside_when_the_store_is_cleared) {
    const std::vector<Broken> rows = {
        {"a line that is none", "no key and no value\n[config]\nversion=3\n[ui]\ntheme=2\n"},
        {"cut before the version", "[GApplication]\napp=R05PRAABAAAAAAA"},
        {"cut before the version, at a line", "[GApplication]\napp=R05PRAABAAAAAAAAAAA=\n"},
        {"cut before the number", "[config]\nversion=\n"},
        {"cut in the number", "[ui]\ntheme=2\n[config]\nversion=11"},
        {"a version of another type", "[config]\nversion=@Rect(0 0 1 1)\n[ui]\ntheme=2\n"},
        {"a version that is a word", "[config]\nversion=abc\n[ui]\ntheme=2\n"},
        {"a version beyond 32 bits", "[config]\nversion=4294967296\n[ui]\ntheme=2\n"},
    };
    for (const Broken& row : rows) {
        write_file(row.content, EVERYBODY);
        const test::LogCapture log;
        testing::internal::CaptureStdout();
        {
            SettingsStore store;
            EXPECT_TRUE(store.check_update_config(110, true)) << row.name;
        }
        testing::internal::GetCapturedStdout();
        EXPECT_EQ(read_file(kept_path()), row.content) << row.name;
        EXPECT_EQ(read_file(), QByteArray("[config]\nversion=110\n")) << row.name;
        EXPECT_EQ(mode(), 0600u) << row.name;
    }
}

TEST_F(GSettingsFileTest, that_is_older_but_whole_is_not_kept_aside) {
    write_file("[config]\nversion=3\n[ui]\ntheme=2\n", EVERYBODY);
    const test::LogCapture log;
    testing::internal::CaptureStdout();
    SettingsStore().check_update_config(110, true);
    testing::internal::GetCapturedStdout();
    EXPECT_FALSE(QFile::exists(kept_path()));
}

// What a program does without a change by its user: it reads both nodes and writes them at its end.
void start_and_quit() {
    const QString window = QStringLiteral("WinChat2_0");
    SettingsStore store;
    EXPECT_FALSE(store.check_update_config(110, true));
    const GNode app = store.get_app_node();
    const GNode state = store.get_window_node(window);
    store.set_app_node(app);
    store.set_window_node(state, window);
}

TEST_F(GSettingsFileTest, that_is_damaged_is_copied_before_it_is_written_over) {
    const QByteArray app = VERSION + "[GApplication]\napp=";
    const QByteArray window = VERSION + "[Window]\nWinChat2_0=";
    const std::vector<Damage> rows = {
        {"not base64", app + "?!#\n", {"from_qstring, base64 decode failed"}},
        {"a comma", app + "R05P,!!\n", {"from_qstring, failed to read magic"}},
        {"another version", window + "R05PRAACAAAAAAA=\n", {"from_qstring, unsupported version:2"}},
        {"a part of a node",
         window + "R05PRAABAAAAAQ==\n",
         {"GAttributes::from_stream, key read error!, at index:0",
          "GAttributes::from_stream, read error!", "from_qstring, node deserialization failed"}},
        {"no node", app + "\n", {}},
        {"another type", app + "@Rect(1 2 3 4)\n", {}},
        {"a line that is none", "no key and no value\n" + VERSION, {}},
        {"cut in a value", VERSION + "[ui]\ntheme=\"2", {}},
        {"cut behind a value", VERSION + "[ui]\ntheme=2", {}},
    };
    for (const Damage& row : rows) {
        QFile::remove(kept_path());
        write_file(row.node, EVERYBODY);
        test::LogCapture log;
        for (const std::string& error : row.errors) {
            log.expect_error(error);
        }
        start_and_quit();
        EXPECT_EQ(read_file(kept_path()), row.node) << row.name;
        EXPECT_EQ(mode(kept_path()), 0600u) << row.name;
        EXPECT_NE(read_file(), row.node) << row.name;
    }
}

TEST_F(GSettingsFileTest, that_is_whole_is_not_copied) {
    write_file(VERSION, EVERYBODY);
    start_and_quit();
    start_and_quit();
    EXPECT_FALSE(QFile::exists(kept_path()));
}

TEST_F(GSettingsFileTest, is_copied_as_it_was_before_the_first_write) {
    const QByteArray content = VERSION + "[GApplication]\napp=?!#\n\n[Window]\nWinChat2_0=?!#\n";
    write_file(content, EVERYBODY);
    test::LogCapture log;
    log.expect_error("from_qstring, base64 decode failed");
    log.expect_error("from_qstring, base64 decode failed");
    SettingsStore store;
    store.set_app_node(store.get_app_node());
    store.sync();
    EXPECT_EQ(store.get_window_node(QStringLiteral("WinChat2_0")), GNode());
    EXPECT_EQ(read_file(kept_path()), content);
}

// A value in there would be read unlooked at, whichever key is asked for.
TEST_F(GSettingsFileTest, is_the_only_one_that_is_read) {
    const QString others = QFileInfo(path()).path() + QStringLiteral(".conf");
    QFile file(others);
    QDir().mkpath(QFileInfo(path()).path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[ui]\ntheme=2\n");
    file.close();
    EXPECT_EQ(SettingsStore().get_theme(), 1u);
    file.remove();
}

TEST_F(GSettingsFileTest, that_cannot_be_made_leaves_the_values_of_this_run) {
    const QString folder = QFileInfo(path()).path();
    ASSERT_TRUE(QDir(folder).removeRecursively());
    QFile in_the_way(folder);
    ASSERT_TRUE(in_the_way.open(QIODevice::WriteOnly));
    SettingsStore store;
    store.set(KEY, 1, nullptr);
    store.sync();
    EXPECT_EQ(store.status(), QSettings::AccessError);
    EXPECT_EQ(store.get_int(KEY, 0, nullptr), 1);
    in_the_way.remove();
}

TEST_F(GSettingsFileTest, on_a_full_disk_stays_as_it_was) {
    write_file(WITH_KEY, EVERYBODY);
    SettingsStore store;
    store.set(KEY, QString(1000, QLatin1Char('x')), nullptr);

    {
        const FullDisk disk(100);
        store.sync();
    }
    EXPECT_EQ(read_file(), WITH_KEY);
    EXPECT_EQ(store.value(KEY).toString().size(), 1000);
    store.sync();  // there is room again
    EXPECT_GT(read_file().size(), 1000);
    EXPECT_EQ(mode(), 0600u);
}

TEST_F(GSettingsFileTest, is_written_by_the_event_loop_as_soon_as_there_is_room_again) {
    const Application application;
    write_file(WITH_KEY, EVERYBODY);
    SettingsStore store;
    {
        const FullDisk disk(100);
        store.set(KEY, 2, nullptr);
        QCoreApplication::processEvents();
        EXPECT_EQ(read_file(), WITH_KEY);
    }
    store.set(KEY, 3, nullptr);
    const QDeadlineTimer limit(20'000);
    while (read_file() == WITH_KEY && !limit.hasExpired()) {
        QCoreApplication::processEvents();
        QThread::msleep(5);
    }
    EXPECT_EQ(read_file(), QByteArray("[General]\nkey=3\n"));
}

}  // namespace
