#include "ze/qt/components/GPlainTextEdit.h"

#include "ze/tools/format.h"

#include <QTest>

#include <set>
#include <string>

#include <gtest/gtest.h>

using namespace ze::qt;

namespace {

// Keeps what a text edit reports.
struct Watched {
    Watched() {
        watch(edit.text_changed_listener, "text");
        watch(edit.selection_changed_listener, "selection");
        watch(edit.cursor_position_listener, "cursor");
        watch(edit.copy_available_listener, "copy");
        watch(edit.undo_available_listener, "undo");
        watch(edit.redo_available_listener, "redo");
        watch(edit.modification_listener, "modification");
        watch(edit.block_count_listener, "blocks");
        edit.update_request_listener += [this](const RectUpdate& update) {
            if (!update.rect.isEmpty()) {
                calls.insert("update");
            }
        };
    }

    void watch(ze::Listener<ze::NO_PAYLOAD>& listener, const std::string& name) {
        listener += [this, name] {
            calls.insert(name);
        };
    }
    template <class T>
    void watch(ze::Listener<T>& listener, const std::string& name) {
        listener += [this, name](const T& value) {
            calls.insert(ze::str::xprintF(0, "$ $", name, value));
        };
    }

    std::set<std::string> after(const std::function<void()>& act) {
        calls.clear();
        act();
        calls.erase("update");
        return calls;
    }

    GPlainTextEdit edit;
    std::set<std::string> calls;
};

using Calls = std::set<std::string>;

}  // namespace

TEST(GPlainTextEdit, takes_text_and_tool_tip) {
    GPlainTextEdit edit(QStringLiteral("text"), QStringLiteral("tip"));
    EXPECT_EQ(edit.toPlainText(), QStringLiteral("text"));
    EXPECT_EQ(edit.toolTip(), QStringLiteral("tip"));
    edit.set_string("$ <b>", 1);
    EXPECT_EQ(edit.toPlainText(), QStringLiteral("1 <b>"));
}

TEST(GPlainTextEdit, each_signal_reaches_its_listener) {
    Watched w;
    EXPECT_EQ(w.after([&w] { w.edit.insertPlainText(QStringLiteral("a\nb")); }),
              (Calls{"text", "cursor", "blocks 2", "undo true", "modification true"}));
    EXPECT_EQ(w.after([&w] { w.edit.selectAll(); }), (Calls{"selection", "copy true"}));
    EXPECT_EQ(w.after([&w] { w.edit.moveCursor(QTextCursor::End); }),
              (Calls{"selection", "copy false"}));
    EXPECT_EQ(w.after([&w] { w.edit.undo(); }), (Calls{"text", "cursor", "blocks 1", "undo false",
                                                       "redo true", "modification false"}));
}

TEST(GPlainTextEdit, a_repaint_that_is_needed_is_told_with_its_rectangle) {
    Watched w;
    w.edit.resize(200, 100);
    w.edit.show();
    w.calls.clear();
    w.edit.insertPlainText(QStringLiteral("a\nb"));
    EXPECT_TRUE(w.calls.contains("update"));
}
