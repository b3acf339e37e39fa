// The file that GSettings keeps: who may read it, and what becomes of one that cannot be read or
// written.
#include "ze/store/GNode.h"
#include "ze/tools/GSettings.h"
#include "ze/tools/SettingsStore.h"

#include "support/LogCapture.h"

#include <QColor>
#include <QCoreApplication>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QFont>
#include <QImage>
#include <QLineF>
#include <QLocale>
#include <QStringList>
#include <QThread>
#include <QUrl>
#include <QUuid>

#include <array>
#include <csignal>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

using test::SettingsStore;
using ze::store::GNode;
using ze::store::GType;

const QString KEY = QStringLiteral("key");
const QByteArray WITH_KEY = "[General]\nkey=1\n";
constexpr QFile::Permissions EVERYBODY =
    QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;

class GSettingsFileTest : public test::SettingsFixture {
protected:
    GSettingsFileTest() { umask(0); }  // the worst that a user can have
    ~GSettingsFileTest() override { umask(umaskBefore); }

    static unsigned mode(const QString& name = path()) {
        struct stat info {};
        return stat(name.toLocal8Bit().constData(), &info) == 0 ? info.st_mode & 0777u : 0;
    }

    static QString kept_path() { return path() + QStringLiteral(".unreadable"); }

private:
    const mode_t umaskBefore = umask(022);
};

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

/// A disk on which no file gets longer than these bytes.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit full{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }

private:
    rlimit before{};
    void (*const handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
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

const QByteArray VERSION = "[config]\nversion=110\n\n";

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

const QByteArray STRINGS = R"(Variant(\0\0\0\v\xff\xff\xff\xff))";

TEST_F(GSettingsFileTest, with_a_value_that_could_harm_loses_only_that_and_is_copied) {
    const std::vector<Broken> rows = {
        {"four billion strings", "@" + STRINGS},
        {"four billion strings of a moment", R"(@DateTime(\0\0\0\v\0\xff\xff\xff\xff))"},
        {"lists without end",
         "@Variant(" + QByteArray(R"(\0\0\0\t\0\0\0\x1)").repeated(200000) + ")"},
        {"four billion strings in a map",
         R"(@Variant(\0\0\0\b\0\0\0\x1\0\0\0\x2\0\x61\0\0\0\v\xff\xff\xff\xff))"},
        {"a picture", R"(@Variant(\0\0\0\x41\0\0\0\x1))"},
        {"a number that begins like that of a colour", R"(@Variant(\0\0\0\x43f\0\0\0\x1))"},
        {"a type of a plugin", R"(@Variant(\0\0\0\x7f\0\0\0\x6QPolygonF\0))"},
        {"too short for a number", R"(@Variant(\0\0\0))"},
        {"behind another value", "1, @" + STRINGS},
        {"behind a text with a comma", "\"a, b\", @" + STRINGS},
        {"behind a blank that is skipped", "1,\t@" + STRINGS},
        {"in quotes", "\"@" + STRINGS + '"'},
        {"before a blank that is cut off", "@" + STRINGS + "  "},
        {"parted by quotes", "\"@Vari\" ant" + STRINGS.mid(7)},
        {"a hexadecimal letter", R"(@Va\x72)" + STRINGS.mid(3)},
        {"a hexadecimal letter of many digits", R"(@Va\x7000000000072)" + STRINGS.mid(3)},
        {"an octal letter", R"(\100)" + STRINGS},
        {"a letter that is skipped", R"(@V\qariant)" + STRINGS.mid(7)},
        {"a mark that the decoder drops", QByteArray("\\x40\xEF\xBB\xBF") + STRINGS},
        {"half a letter that the decoder drops", QByteArray("@Variant\xEF\\x28") + STRINGS.mid(8)},
        {"behind a key with an escaped sign", "\\=x=@" + STRINGS},
        {"behind a comment", "1;\nx=@" + STRINGS},
    };
    for (const Broken& row : rows) {
        const QByteArray content = VERSION + "[ui]\ntheme=" + row.content + "\nlast=7\n";
        QFile::remove(kept_path());
        write_file(content, EVERYBODY);
        const SettingsStore store;
        EXPECT_FALSE(store.value(QStringLiteral("ui/x")).isValid()) << row.name;
        EXPECT_EQ(store.get_theme(), 1u) << row.name;
        EXPECT_EQ(store.get_config_version(), 110u) << row.name;
        EXPECT_EQ(store.value(QStringLiteral("ui/last")).toInt(), 7) << row.name;
        EXPECT_EQ(mode(), 0600u) << row.name;
        EXPECT_EQ(read_file(kept_path()), content) << row.name;
        EXPECT_EQ(mode(kept_path()), 0600u) << row.name;
    }
}

TEST_F(GSettingsFileTest, in_which_a_value_that_could_harm_may_span_lines_is_kept_aside_whole) {
    const std::vector<Broken> rows = {
        {"a line that goes on", "theme=@Vari\\\r\nant" + STRINGS.mid(7)},
        {"an open quotation", "x=\"\ny=\"a, @" + STRINGS + ", \"\nz=\""},
        {"a line end of old", "x=\"a\ry=b, @" + STRINGS + "\""},
    };
    for (const Broken& row : rows) {
        const QByteArray content = VERSION + "[ui]\n" + row.content + "\n";
        QFile::remove(kept_path());
        write_file(content, EVERYBODY);
        const SettingsStore store;
        EXPECT_EQ(store.allKeys(), QStringList()) << row.name;
        EXPECT_EQ(read_file(kept_path()), content) << row.name;
        EXPECT_EQ(mode(kept_path()), 0600u) << row.name;
    }
}

TEST_F(GSettingsFileTest, with_harm_that_cannot_be_replaced_for_want_of_room_is_kept_aside_whole) {
    const QByteArray content = "[ui]\ntheme=@" + STRINGS + "\n" + QByteArray(200, ';') + "\n";
    write_file(content, EVERYBODY);
    const FullDisk disk(100);
    const SettingsStore store;
    EXPECT_EQ(store.allKeys(), QStringList());
    EXPECT_EQ(read_file(kept_path()), content);
}

struct Value {
    const char* name;
    QVariant value;
};

std::vector<Value> values_of_every_kind() {
    const QDate date(2024, 2, 29);
    const GType pod{99, QByteArray("\0\"\\;,)\xff", 7)};
    const QVariantMap map{{QStringLiteral("pod"), QVariant::fromValue(pod)},
                          {QStringLiteral("font"), QFont(QStringLiteral("Sans"), 12)},
                          {QStringLiteral("list"), QVariantList{1, QStringLiteral("a, b")}},
                          {QStringLiteral("ünd"), QVariant()}};
    return {
        {"colour", QColor(1, 2, 3)},
        {"white", QColor(255, 255, 255)},
        {"float", 0.1f},
        {"long", QVariant::fromValue(-7L)},
        {"short", QVariant::fromValue(static_cast<unsigned short>(65535))},
        {"date", date},
        {"time", QTime(1, 2, 3)},
        {"moment", QDateTime(date, QTime(1, 2, 3), Qt::UTC)},
        {"point", QPointF(1, 2)},
        {"size", QSizeF(1, 2)},
        {"rectangle", QRectF(1, 2, 3, 4)},
        {"line", QLineF(1, 2, 3, 4)},
        {"structure", QVariant::fromValue(pod)},
        {"font", QFont(QStringLiteral("Sans"), 12)},
        {"map", map},
        {"hash", QVariantHash{{QStringLiteral("a"), QStringLiteral("\"1\";\n")}}},
        {"list of one", QVariantList{map}},
        {"list", QVariantList{map, QStringLiteral("@x"), 1, QVariant::fromValue(pod)}},
        {"strings in a map",
         QVariantMap{{QStringLiteral("a"), QStringList{QStringLiteral("b"), QString()}}}},
        {"identity", QUuid(QStringLiteral("{67c8770b-44f1-410a-ab9a-f9b5446f13ee}"))},
        {"character", QChar(u'\u2126')},
        {"address", QUrl(QStringLiteral("wss://localhost:8888/ws"))},
        {"language", QLocale(QLocale::German, QLocale::Austria)},
        {"text with the word", QStringLiteral("x@Variant(y")},
        {"text with the word and an end", QStringLiteral("x@Variant(y)")},
        {"text that is the word", QStringLiteral("@DateTime(")},
        {"text that reads like a value", QStringLiteral("@Variant(abcdefgh)")},
        {"text that reads like a bad value", QString::fromLatin1("@Variant(\0\0\0\v\xff)", 14)},
        {"text behind a foreign letter", QStringLiteral("ö@Variant(y)")},
        {"text behind a blank", QStringLiteral(" @Variant(y)")},
        {"text behind a mark", QStringLiteral("\"; @Variant(y)")},
        {"texts", QStringList{QStringLiteral("a"), QStringLiteral("@Variant(y)")}},
        {"bytes", QByteArray("@Variant(\0\0\0\v\xff\n)", 15)},
    };
}

TEST_F(GSettingsFileTest, gives_back_every_value_and_stays_as_it_is) {
    const std::vector<Value> values = values_of_every_kind();
    {
        SettingsStore store;
        for (const auto& [name, value] : values) {
            store.set(QStringLiteral("group/") + QLatin1String(name), value, nullptr);
        }
    }
    const QByteArray written = read_file();
    const SettingsStore store;
    EXPECT_EQ(read_file(), written);
    EXPECT_FALSE(QFile::exists(kept_path()));
    for (const auto& [name, value] : values) {
        EXPECT_EQ(store.value(QStringLiteral("group/") + QLatin1String(name)), value) << name;
    }
}

TEST_F(GSettingsFileTest, loses_only_a_value_of_a_type_that_is_not_known_to_be_harmless) {
    {
        SettingsStore store;
        store.set(QStringLiteral("picture"), QImage(2, 2, QImage::Format_RGB32), nullptr);
        store.set(KEY, QColor(1, 2, 3), nullptr);
    }
    const SettingsStore store;
    EXPECT_EQ(store.allKeys(), QStringList{KEY});
    EXPECT_EQ(store.get_color(KEY, Qt::blue, nullptr), QColor(1, 2, 3));
    EXPECT_TRUE(QFile::exists(kept_path()));
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
