#include "ze/qt/components/GAction.h"

#include "support/LogCapture.h"

#include <QCoreApplication>

#include <memory>
#include <string>
#include <vector>

using ze::qt::GAction;

namespace {

using Texts = std::vector<std::string>;

class GActionTest : public testing::Test {
protected:
    GActionTest() {
        log.ignore("Listener::~Listener");
        action->triggered_signal += [this] {
            calls.emplace_back("signal");
        };
        action->triggered_listener += [this](const bool& on) {
            calls.emplace_back(on ? "on" : "off");
        };
        action->hovered_signal += [this] {
            calls.emplace_back("hovered");
        };
    }

    test::LogCapture log;
    Texts calls;
    std::unique_ptr<GAction> action = std::make_unique<GAction>(nullptr, QStringLiteral("Logging"));
};

}  // namespace

TEST_F(GActionTest, fires_both_listeners_with_the_check_state) {
    action->setCheckable(true);
    action->trigger();
    action->trigger();
    EXPECT_EQ(calls, (Texts{"signal", "on", "signal", "off"}));
}

TEST_F(GActionTest, with_a_delay_fires_when_the_event_loop_turns) {
    action->delay = 200;
    action->trigger();
    EXPECT_EQ(calls, Texts{});
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, (Texts{"signal", "off"}));
}

TEST_F(GActionTest, that_is_gone_before_the_event_loop_turns_fires_nothing) {
    action->delay = 200;
    action->trigger();
    action.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, Texts{});
}

TEST_F(GActionTest, tells_when_it_is_hovered) {
    action->hover();
    EXPECT_EQ(calls, Texts{"hovered"});
}

TEST_F(GActionTest, logs_its_changes) {
    action->setVisible(false);
    action->setCheckable(true);
    action->setChecked(true);
    EXPECT_EQ(log.lines_with_level(),
              (Texts{"DEB ACTION, visibleChanged", "DEB ACTION, checkableChanged:true",
                     "DEB ACTION, toggled:true"}));
}

TEST_F(GActionTest, takes_text_parent_and_shortcut) {
    QObject parent;
    auto* const child = new GAction(&parent, QStringLiteral("Help"));
    child->set_short_cut(QKeySequence(Qt::CTRL | Qt::Key_L));
    EXPECT_EQ(child->parent(), &parent);
    EXPECT_EQ(child->text(), QStringLiteral("Help"));
    EXPECT_EQ(child->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_L));
}
