#include "ze/qt/dialogs/GMessageBox.h"

#include "ze/tools/format.h"

#include "support/LogCapture.h"

#include <QAbstractButton>
#include <QPointer>
#include <QTest>
#include <QWidget>

#include <algorithm>
#include <string>
#include <vector>

using ze::qt::GMessageBox;

namespace {

using Texts = std::vector<std::string>;

class GMessageBoxTest : public testing::Test {
protected:
    GMessageBoxTest() { log.ignore("Listener::~Listener"); }

    // Writes down what the box reports.
    void watch(GMessageBox* box) {
        box->finished_listener += [this](const int& result) {
            calls.push_back(ze::str::xprintF(0, "finished $", result));
        };
        box->accepted_listener += [this] {
            calls.emplace_back("accepted");
        };
        box->rejected_listener += [this] {
            calls.emplace_back("rejected");
        };
    }

    void click(GMessageBox* box, QMessageBox::StandardButton button) {
        QTest::mouseClick(box->button(button), Qt::LeftButton);
    }

    // What was logged since the last call, each line behind its level.
    Texts take_lines() {
        Texts lines = log.lines_with_level();
        log.clear();
        return lines;
    }

    test::LogCapture log;
    Texts calls;
};

const QString TITLE = QStringLiteral("title");
const QString TEXT = QStringLiteral("text");

}  // namespace

TEST_F(GMessageBoxTest, each_kind_has_its_icon_buttons_and_line) {
    struct Row {
        GMessageBox* box;
        QMessageBox::Icon icon;
        QMessageBox::StandardButtons buttons;
        Texts lines;
    };
    GMessageBox* const info = GMessageBox::show_info(nullptr, TITLE, TEXT);
    const Texts linesInfo = take_lines();
    GMessageBox* const error = GMessageBox::show_error(nullptr, TITLE, TEXT);
    const Texts linesError = take_lines();
    GMessageBox* const question =
        GMessageBox::ask_yes_no(nullptr, TITLE, TEXT, QMessageBox::Warning);
    const Texts linesQuestion = take_lines();
    for (const Row& row :
         {Row{info, QMessageBox::Information, QMessageBox::Ok, linesInfo},
          Row{error, QMessageBox::Critical, QMessageBox::Ok, linesError},
          Row{question, QMessageBox::Warning, QMessageBox::Yes | QMessageBox::No, linesQuestion}}) {
        EXPECT_TRUE(row.box->isVisible());
        EXPECT_EQ(row.box->windowTitle(), TITLE);
        EXPECT_EQ(row.box->text(), TEXT);
        EXPECT_EQ(row.box->icon(), row.icon);
        EXPECT_EQ(row.box->standardButtons(), row.buttons);
        delete row.box;
    }
    EXPECT_EQ(linesInfo, Texts{"DEB GMessageBox::show_info"});
    EXPECT_EQ(linesError, Texts{"DEB GMessageBox::show_error:text"});
    EXPECT_EQ(linesQuestion, Texts{});
}

TEST_F(GMessageBoxTest, takes_the_palette_of_its_parent_and_blocks_its_window) {
    QWidget parent;
    QPalette palette = parent.palette();
    palette.setColor(QPalette::Window, Qt::darkRed);
    parent.setPalette(palette);
    const GMessageBox* const box = GMessageBox::show_info(&parent, TITLE, TEXT);
    EXPECT_EQ(box->palette().color(QPalette::Window), QColor(Qt::darkRed));
    EXPECT_EQ(box->windowModality(), Qt::WindowModal);
}

TEST_F(GMessageBoxTest, an_answer_comes_through_the_listeners) {
    struct Row {
        QMessageBox::StandardButton button;
        Texts calls;
    };
    for (const Row& row : {Row{QMessageBox::Yes, {"accepted", "finished 16384"}},
                           Row{QMessageBox::No, {"finished 65536", "rejected"}}}) {
        GMessageBox* const box = GMessageBox::ask_yes_no(nullptr, TITLE, TEXT);
        watch(box);
        click(box, row.button);
        std::sort(calls.begin(), calls.end());
        EXPECT_EQ(calls, row.calls);
        calls.clear();
    }
}

TEST_F(GMessageBoxTest, a_closed_box_deletes_itself) {
    const QPointer<GMessageBox> box = GMessageBox::show_info(nullptr, TITLE, TEXT);
    click(box, QMessageBox::Ok);
    EXPECT_TRUE(QTest::qWaitFor([&box] { return box.isNull(); }));
}
