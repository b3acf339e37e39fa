#include "ze/qt/dialogs/GDialog.h"

#include "ze/qt/GMainPanel.h"
#include "ze/qt/GMainWindow.h"
#include "ze/qt/components/GButton.h"

#include "support/LogCapture.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <string>
#include <vector>

using namespace ze::qt;

namespace {

class PlainWindow : public GMainWindow {
public:
    PlainWindow() : GMainWindow(nullptr, {}) {}
    void ini() override {}
};

std::vector<std::string> button_texts(const QWidget& widget) {
    std::vector<std::string> texts;
    for (const auto* const button : widget.findChildren<QPushButton*>()) {
        texts.push_back(button->text().toStdString());
    }
    return texts;
}

class GDialogTest : public testing::Test {
protected:
    GDialogTest() { log.ignore(""); }

    test::LogCapture log;
};

}  // namespace

TEST_F(GDialogTest, the_main_panel_fills_the_dialog) {
    GDialog dialog;
    GMainPanel* const panel = dialog.gen_main_panel(GLAYOUT::HORIZONTAL);
    EXPECT_TRUE(panel->is_layout(GLAYOUT::HORIZONTAL));
    EXPECT_EQ(panel->parentWidget(), &dialog);
    ASSERT_NE(qobject_cast<QVBoxLayout*>(dialog.layout()), nullptr);
    EXPECT_EQ(dialog.layout()->contentsMargins(), QMargins(0, 0, 0, 0));
    EXPECT_EQ(dialog.layout()->spacing(), 0);
}

TEST_F(GDialogTest, the_demonstration_has_four_names_and_an_end) {
    GDialog dialog;
    dialog.ini();
    EXPECT_EQ(button_texts(dialog),
              (std::vector<std::string>{"Ebbe", "Rika", "Sanne", "Mela", "End"}));
    dialog.show();
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("End")), Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(GDialogTest, the_main_window_is_active_again_after_the_dialog) {
    PlainWindow window;
    window.QWidget::show();
    GDialog dialog(&window);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    dialog.close();
    EXPECT_TRUE(QTest::qWaitFor([&window] { return QApplication::activeWindow() == &window; }));
}

TEST_F(GDialogTest, a_dialog_without_a_parent_gives_the_keyboard_to_the_window_that_is_open) {
    PlainWindow window;
    window.QWidget::show();
    GDialog dialog;
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    dialog.reject();
    EXPECT_TRUE(QTest::qWaitFor([&window] { return QApplication::activeWindow() == &window; }));
}
