// The file that GSettings keeps: who may read it, and what becomes of one that cannot be read or
// written.
#include "ze/store/GNode.h"
#include "ze/tools/GSettings.h"
#include "ze/tools/SettingsStore.h"

#include "support/LogCapture.h"

#include <QStringList>

#include <csignal>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

using test::SettingsStore;
using ze::store::GNode;

const QString KEY = QStringLiteral("key");
const QByteArray WITH_KEY = "[General]\nkey=1\n";
constexpr QFile::Permissions EVERYBODY =
    QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;

class GSettingsFileTest : public test::SettingsFixture {
protected:
    GSettingsFileTest() { umask(0); }  // the worst that a user can have
    ~GSettingsFileTest() override { umask(umaskBefore); }

    static unsigned mode() {
        struct stat info {};
        return stat(path().toLocal8Bit().constData(), &info) == 0 ? info.st_mode & 0777u : 0;
    }

private:
    const mode_t umaskBefore = umask(022);
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
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    const QString organisation = QCoreApplication::organizationName();
    const QString application = QCoreApplication::applicationName();
    const QCoreApplication app(argc, argv);
    QCoreApplication::setOrganizationName(organisation);
    QCoreApplication::setApplicationName(application);
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

struct Broken {
    const char* name;
    QByteArray content;
};

TEST_F(GSettingsFileTest, that_is_broken_gives_defaults_and_stays_as_it_is) {
    const std::vector<Broken> rows = {
        {"empty", ""},
        {"binary", QByteArray("\x00\xff\x80\x01\n\x7f", 6)},
        {"no key", "=1\n[\n[ui\n"},
        {"words", "this is no settings file\n"},
        {"wrong types", "[ui]\ntheme=green\n[config]\nversion=@Rect(0 0 1 1)\n[log]\nlevel=-1\n"},
        {"broken variants", "[ui]\ntheme=@Variant(\\0\\0\\0)\n[log]\nlevel=@ByteArray(\n"},
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
        EXPECT_EQ(read_file(path() + QStringLiteral(".unreadable")), row.content) << row.name;
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
    EXPECT_FALSE(QFile::exists(path() + QStringLiteral(".unreadable")));
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

    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{100, before.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &full);
    store.sync();
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);

    EXPECT_EQ(read_file(), WITH_KEY);
    EXPECT_EQ(store.value(KEY).toString().size(), 1000);
    store.sync();  // there is room again
    EXPECT_GT(read_file().size(), 1000);
    EXPECT_EQ(mode(), 0600u);
}

}  // namespace
