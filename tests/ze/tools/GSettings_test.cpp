#include "ze/tools/GSettings.h"

#include "ze/store/GNode.h"
#include "ze/tools/SettingsStore.h"

#include "support/LogCapture.h"

#include <QObject>
#include <QStringList>

#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using test::SettingsStore;
using ze::qt::GSettings;
using ze::store::GNode;

class GSettingsTest : public test::SettingsFixture {};

TEST_F(GSettingsTest, is_one_object_without_a_parent) {
    GSettings& settings = GSettings::instance();
    EXPECT_EQ(&GSettings::instance(), &settings);
    EXPECT_EQ(settings.parent(), nullptr);
    EXPECT_FALSE(GSettings::flagDebug);
}

TEST_F(GSettingsTest, has_defaults_for_what_was_never_stored) {
    const SettingsStore store;
    EXPECT_EQ(store.get_theme(), 1u);
    EXPECT_EQ(store.get_config_version(), 99u);
    EXPECT_EQ(store.get_log_level(), 0u);
    EXPECT_EQ(store.get_version(), 0u);
    EXPECT_EQ(store.get_version_minimum(), 0u);
}

TEST_F(GSettingsTest, keeps_named_values_under_their_keys) {
    SettingsStore store;
    store.set_theme(2);
    store.set_config_version(110);
    store.set_log_level(4);
    EXPECT_EQ(store.get_theme(), 2u);
    EXPECT_EQ(store.get_config_version(), 110u);
    EXPECT_EQ(store.get_log_level(), 4u);
    EXPECT_EQ(store.value(QStringLiteral("ui/theme")).toUInt(), 2u);
    EXPECT_EQ(store.value(QStringLiteral("config/version")).toUInt(), 110u);
    EXPECT_EQ(store.value(QStringLiteral("log/level")).toUInt(), 4u);
}

TEST_F(GSettingsTest, gives_an_empty_node_for_a_name_never_stored_without_a_log_line) {
    const test::LogCapture log;
    const SettingsStore store;
    EXPECT_EQ(store.get_window_node(QStringLiteral("WinChat2_0")), GNode());
    EXPECT_EQ(store.get_app_node(), GNode());
    EXPECT_EQ(log.lines(), std::vector<std::string>());
}

TEST_F(GSettingsTest, keeps_nodes_as_their_text) {
    GNode node;
    node.ensure_node(QStringLiteral("child")).set(QStringLiteral("x"), 5);
    SettingsStore store;
    store.set_app_node(node);
    store.set_window_node(node, QStringLiteral("WinChat2_0"));
    store.set_node(QStringLiteral("other"), node);
    EXPECT_EQ(store.get_app_node(), node);
    EXPECT_EQ(store.get_window_node(QStringLiteral("WinChat2_0")), node);
    EXPECT_EQ(store.get_node(QStringLiteral("other")), node);
    const QString text = node.to_base_64_string();
    EXPECT_EQ(store.value(QStringLiteral("GApplication/app")).toString(), text);
    EXPECT_EQ(store.value(QStringLiteral("Window/WinChat2_0")).toString(), text);
}

// The application's node is read before the application object registers the name.
TEST_F(GSettingsTest, reads_a_node_with_the_second_name_of_the_structure_type) {
    GNode node;
    node.set_pod(QStringLiteral("log"), ze::log::LogConfig());
    QByteArray bytes = QByteArray::fromBase64(node.to_base_64_string().toLatin1());
    bytes.replace(QByteArray("\x11ze::store::GType", 17), QByteArray("\x12zek::store::GType", 18));
    SettingsStore store;
    store.setValue(QStringLiteral("GApplication/app"), QString::fromLatin1(bytes.toBase64()));
    EXPECT_EQ(store.get_app_node(), node);
}

TEST_F(GSettingsTest, keeps_values_of_an_owner_under_a_key_of_their_own) {
    QObject owner;
    owner.setObjectName(QStringLiteral("panel"));
    SettingsStore store;
    store.set(QStringLiteral("k"), 1, nullptr);
    store.set(QStringLiteral("k"), 2, &owner);
    EXPECT_EQ(store.allKeys(), (QStringList{QStringLiteral("k"), QStringLiteral("k@panel")}));
    EXPECT_EQ(store.get_int(QStringLiteral("k"), 0, nullptr), 1);
    EXPECT_EQ(store.get_int(QStringLiteral("k"), 0, &owner), 2);
}

const QString KEY = QStringLiteral("key");

TEST_F(GSettingsTest, reads_every_type_under_the_key_of_its_owner) {
    QObject owner;
    owner.setObjectName(QStringLiteral("panel"));
    SettingsStore store;
    store.set(KEY, 7, &owner);
    EXPECT_EQ(store.get_uint(KEY, 5, &owner), 7u);
    EXPECT_EQ(store.get_uint(KEY, 5, nullptr), 5u);
    EXPECT_EQ(store.get_float(KEY, 5, &owner), 7);
    EXPECT_EQ(store.get_float(KEY, 5, nullptr), 5);
    EXPECT_EQ(store.get_double(KEY, 5, &owner), 7);
    EXPECT_EQ(store.get_double(KEY, 5, nullptr), 5);
    store.set(KEY, Qt::red, &owner);
    EXPECT_EQ(store.get_color(KEY, Qt::blue, &owner), QColor(Qt::red));
    EXPECT_EQ(store.get_color(KEY, Qt::blue, nullptr), QColor(Qt::blue));
}

TEST_F(GSettingsTest, reads_numbers_back_from_the_file) {
    {
        SettingsStore store;
        store.set(QStringLiteral("uint"), 4'294'967'295u, nullptr);
        store.set(QStringLiteral("int"), -7, nullptr);
        store.set(QStringLiteral("float"), 0.1f, nullptr);
        store.set(QStringLiteral("double"), 0.1, nullptr);
    }
    const SettingsStore store;
    EXPECT_EQ(store.get_uint(QStringLiteral("uint"), 0, nullptr), 4'294'967'295u);
    EXPECT_EQ(store.get_int(QStringLiteral("int"), 0, nullptr), -7);
    EXPECT_EQ(store.get_float(QStringLiteral("float"), 0, nullptr), 0.1f);
    EXPECT_EQ(store.get_double(QStringLiteral("double"), 0, nullptr), 0.1);
}

TEST_F(GSettingsTest, reads_shapes_and_colours_back_from_the_file) {
    const QRect rect(-1, 2, 3, 4);
    {
        SettingsStore store;
        store.set_rect(QStringLiteral("rect"), rect);
        store.set_point(QStringLiteral("point"), QPoint(5, -6));
        store.set_size(QStringLiteral("size"), QSize(7, 8));
        store.set(QStringLiteral("color"), QVariant(QColor(1, 2, 3, 4)), nullptr);
        store.set(QStringLiteral("global"), Qt::red, nullptr);
    }
    const SettingsStore store;
    EXPECT_EQ(store.get_rect(QStringLiteral("rect"), QRect()), rect);
    EXPECT_EQ(store.get_point(QStringLiteral("point"), QPoint()), QPoint(5, -6));
    EXPECT_EQ(store.get_size(QStringLiteral("size"), QSize()), QSize(7, 8));
    EXPECT_EQ(store.get_color(QStringLiteral("color"), Qt::blue, nullptr), QColor(1, 2, 3, 4));
    EXPECT_EQ(store.get_color(QStringLiteral("global"), Qt::blue, nullptr), QColor(Qt::red));
}

TEST_F(GSettingsTest, reads_defaults_for_values_of_another_type) {
    const std::vector<QVariant> rows = {
        QVariant(),
        QStringLiteral("some text"),
        QStringLiteral("99999999999999999999 "),
        QStringLiteral("nan"),
        QByteArray("\x00\xff", 2),
        QStringList{QStringLiteral("1"), QStringLiteral("2")},
    };
    SettingsStore store;
    for (const QVariant& row : rows) {
        store.set(KEY, row, nullptr);
        EXPECT_EQ(store.get_uint(KEY, 5, nullptr), 5u);
        EXPECT_EQ(store.get_int(KEY, -5, nullptr), -5);
        EXPECT_EQ(store.get_color(KEY, Qt::blue, nullptr), QColor(Qt::blue));
        EXPECT_EQ(store.get_rect(KEY, QRect(1, 2, 3, 4)), QRect(1, 2, 3, 4));
        EXPECT_EQ(store.get_point(KEY, QPoint(1, 2)), QPoint(1, 2));
        EXPECT_EQ(store.get_size(KEY, QSize(3, 4)), QSize(3, 4));
    }
}

TEST_F(GSettingsTest, reads_defaults_for_integers_out_of_range) {
    SettingsStore store;
    for (const char* text : {"-1", "4294967296", "18446744073709551616"}) {
        store.set(KEY, QString::fromLatin1(text), nullptr);
        EXPECT_EQ(store.get_uint(KEY, 5, nullptr), 5u) << text;
    }
    for (const char* text : {"2147483648", "-2147483649", "4294967295"}) {
        store.set(KEY, QString::fromLatin1(text), nullptr);
        EXPECT_EQ(store.get_int(KEY, -5, nullptr), -5) << text;
    }
}

TEST_F(GSettingsTest, reads_real_numbers_only_when_they_are_finite) {
    SettingsStore store;
    for (const char* text : {"nan", "inf", "-inf", "1e999", "text", ""}) {
        store.set(KEY, QString::fromLatin1(text), nullptr);
        EXPECT_EQ(store.get_float(KEY, 5, nullptr), 5) << text;
        EXPECT_EQ(store.get_double(KEY, 5, nullptr), 5) << text;
    }
}

TEST_F(GSettingsTest, clears_nothing_from_a_store_without_a_version_up_to_a_minimum_of_99) {
    SettingsStore store;
    store.set(KEY, 1, nullptr);
    EXPECT_FALSE(store.check_update_config(1, true));
    EXPECT_FALSE(store.check_update_config(99, true));
    EXPECT_EQ(store.get_version(), 99u);
    EXPECT_EQ(store.get_version_minimum(), 99u);
    EXPECT_EQ(store.allKeys(), QStringList{KEY});
}

TEST_F(GSettingsTest, changes_nothing_when_the_version_is_the_minimum) {
    const test::LogCapture log;
    SettingsStore store;
    store.set_config_version(4);
    store.set(KEY, 1, nullptr);
    testing::internal::CaptureStdout();
    EXPECT_FALSE(store.check_update_config(4, true));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(log.lines(), std::vector<std::string>());
    EXPECT_EQ(store.allKeys().size(), 2);
}

TEST_F(GSettingsTest, clears_an_older_store_and_raises_its_version) {
    const test::LogCapture log;
    SettingsStore store;
    store.set_config_version(3);
    store.set(KEY, 1, nullptr);
    testing::internal::CaptureStdout();
    EXPECT_TRUE(store.check_update_config(4, true));
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "GSettings::check_update_config, current version:3, version expected:4 " +
                  store.fileName().toStdString() + "\n");
    EXPECT_EQ(
        log.lines_with_level(),
        (std::vector<std::string>{"DEB GSettings::check_update_config - CLEAR",
                                  "DEB GSettings::clear_config", "DEB GSettings::~clear_config"}));
    EXPECT_EQ(store.allKeys(), QStringList{QStringLiteral("config/version")});
    EXPECT_EQ(store.get_config_version(), 4u);
    EXPECT_EQ(store.get_version(), 3u);
}

TEST_F(GSettingsTest, keeps_the_keys_of_an_older_store_and_raises_its_version) {
    const test::LogCapture log;
    SettingsStore store;
    store.set_config_version(3);
    store.set(KEY, 1, nullptr);
    testing::internal::CaptureStdout();
    EXPECT_TRUE(store.check_update_config(4, false));
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(log.lines(), std::vector<std::string>());
    EXPECT_EQ(store.get_int(KEY, 0, nullptr), 1);
    EXPECT_EQ(store.get_config_version(), 4u);
}

TEST_F(GSettingsTest, keeps_no_splitter) {
    SettingsStore store;
    int object = 0;  // only tested for being there
    store.save_splitter_state(reinterpret_cast<QSplitter*>(&object));
    store.restore_splitter_state(reinterpret_cast<QSplitter*>(&object));
    EXPECT_EQ(store.allKeys(), QStringList());
}

using GSettingsDeathTest = GSettingsTest;

TEST_F(GSettingsDeathTest, ends_the_program_for_a_splitter_at_null) {
    for (const auto call : {&GSettings::save_splitter_state, &GSettings::restore_splitter_state}) {
        // The text goes to the standard output; a death test looks at the standard error.
        const auto pass_null = [call] {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            SettingsStore store;
            (store.*call)(nullptr);
        };
        EXPECT_EXIT(pass_null(), testing::ExitedWithCode(1),
                    "^nullptr:splitter == NULL\nsrc/ze/tools/GSettings\nLINE:");
    }
}

TEST_F(GSettingsDeathTest, writes_the_last_changes_at_the_end_of_the_program) {
    const auto change_and_end = [] {
        GSettings::instance().set(KEY, 7, nullptr);
        std::exit(0);
    };
    EXPECT_EXIT(change_and_end(), testing::ExitedWithCode(0), "");
    EXPECT_EQ(SettingsStore().get_int(KEY, 0, nullptr), 7);
}

}  // namespace
