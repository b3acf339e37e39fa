#include "ze/qt/components/GLineEdit.h"

#include "ze/tools/format.h"

#include <QIntValidator>
#include <QTest>

#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace ze::qt;

namespace {

using Texts = std::vector<std::string>;

// Writes down what a line edit reports.
struct Watched {
    Watched() {
        // The first change of a line edit also tells that its cursor was nowhere.
        edit.setText(QStringLiteral("x"));
        edit.clear();
        watch(edit.editing_finished_signal, "finished");
        watch(edit.input_rejected_signal, "rejected");
        watch(edit.return_pressed_signal, "return");
        watch(edit.selection_changed_signal, "selection");
        watch(edit.editing_finished_listener, "finished");
        watch(edit.return_pressed_listener, "return");
        watch(edit.text_changed_listener, "changed");
        watch(edit.text_edited_listener, "edited");
        edit.cursor_position_listener += [this](const CursorPos& pos) {
            calls.push_back(ze::str::xprintF(0, "cursor $ $", pos.posOld, pos.posNew));
        };
    }

    void watch(ze::Listener<ze::NO_PAYLOAD>& listener, const char* name) {
        listener += [this, name] {
            calls.emplace_back(name);
        };
    }
    void watch(ze::Listener<QString>& listener, const char* name) {
        listener += [this, name](const QString& text) {
            calls.push_back(ze::str::xprintF(0, "$ '$'", name, text));
        };
    }
    bool has(const std::string& call) const {
        return std::find(calls.begin(), calls.end(), call) != calls.end();
    }

    GLineEdit edit;
    Texts calls;
};

}  // namespace

TEST(GLineEdit, takes_text_and_tool_tip) {
    GLineEdit edit(QStringLiteral("Nilo"), QStringLiteral("user name"));
    EXPECT_EQ(edit.text(), QStringLiteral("Nilo"));
    EXPECT_EQ(edit.toolTip(), QStringLiteral("user name"));
    edit.set_string("$", 7);
    EXPECT_EQ(edit.text(), QStringLiteral("7"));
}

TEST(GLineEdit, a_typed_character_fires_cursor_edited_and_changed) {
    Watched watched;
    QTest::keyClick(&watched.edit, Qt::Key_A);
    EXPECT_EQ(watched.calls.size(), 3U);
    EXPECT_TRUE(watched.has("cursor 0 1"));
    EXPECT_TRUE(watched.has("edited 'a'"));
    EXPECT_TRUE(watched.has("changed 'a'"));
}

TEST(GLineEdit, a_text_set_by_the_program_is_changed_and_not_edited) {
    Watched watched;
    watched.edit.setText(QStringLiteral("b"));
    EXPECT_TRUE(watched.has("changed 'b'"));
    EXPECT_FALSE(watched.has("edited 'b'"));
}

TEST(GLineEdit, return_fires_signal_and_text_of_return_and_of_the_end_of_editing) {
    Watched watched;
    watched.edit.setText(QStringLiteral("b"));
    watched.calls.clear();
    QTest::keyClick(&watched.edit, Qt::Key_Return);
    EXPECT_EQ(watched.calls, (Texts{"return", "return 'b'", "finished", "finished 'b'"}));
}

TEST(GLineEdit, a_refused_character_fires_rejected) {
    Watched watched;
    watched.edit.setValidator(new QIntValidator(&watched.edit));
    QTest::keyClick(&watched.edit, Qt::Key_A);
    EXPECT_EQ(watched.calls, Texts{"rejected"});
}

TEST(GLineEdit, a_selection_fires_its_signal) {
    Watched watched;
    watched.edit.setText(QStringLiteral("text"));
    watched.edit.selectAll();
    EXPECT_TRUE(watched.has("selection"));
}

TEST(GLineEdit, a_number_is_read_from_the_trimmed_text) {
    struct Row {
        const char* text;
        int asInt;
        long long asLong;
        double asDouble;
    };
    for (const Row& row :
         {Row{" 42 ", 42, 42, 42.0}, Row{"-3", -3, -3, -3.0},
          Row{"2147483648", 7, 2147483648LL, 2147483648.0},
          Row{"9223372036854775808", 7, 8, 9223372036854775808.0}, Row{"1.5", 7, 8, 1.5},
          Row{"0x10", 7, 8, 9.0}, Row{"12a", 7, 8, 9.0}, Row{"", 7, 8, 9.0},
          Row{"1e999", 7, 8, 9.0}, Row{"inf", 7, 8, 9.0}, Row{"nan", 7, 8, 9.0}}) {
        const GLineEdit edit(QString::fromUtf8(row.text));
        EXPECT_EQ(edit.get_parsed_int(7), row.asInt) << row.text;
        EXPECT_EQ(edit.get_parsed_long(8), row.asLong) << row.text;
        EXPECT_EQ(edit.get_parsed_double(9.0), row.asDouble) << row.text;
    }
}
