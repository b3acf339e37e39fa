#include "ze/qt/components/GSplitter.h"

#include "ze/qt/LayoutEvent.h"
#include "ze/qt/components/GDock.h"
#include "ze/qt/components/GLabel.h"
#include "ze/qt/components/GStatusBar.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace ze::qt;

namespace {

class LayoutProbe : public QWidget, public Layouter {
public:
    explicit LayoutProbe(std::vector<QWidget*>& theOrder) : order(theOrder) {}
    void do_layout(LayoutEvent&) override { order.push_back(this); }

private:
    std::vector<QWidget*>& order;
};

}  // namespace

TEST(GSplitter, generates_its_children) {
    GSplitter splitter(Qt::Vertical);
    const GLabel* const label = splitter.gen<GLabel>(QStringLiteral("text"));
    EXPECT_EQ(splitter.orientation(), Qt::Vertical);
    EXPECT_EQ(splitter.widget(0), label);
}

TEST(GSplitter, passes_a_layout_event_to_its_layouters_in_order) {
    std::vector<QWidget*> order;
    GSplitter splitter;
    QWidget* const first = splitter.gen<LayoutProbe>(order);
    splitter.gen<GLabel>(QStringLiteral("text"));
    QWidget* const second = splitter.gen<LayoutProbe>(order);
    LayoutEvent ev;
    splitter.do_layout(ev);
    EXPECT_EQ(order, (std::vector<QWidget*>{first, second}));
}

TEST(GSplitter, a_moved_divider_fires_the_position_then_the_whole) {
    GSplitter splitter;
    splitter.gen<GLabel>(QStringLiteral("a"));
    splitter.gen<GLabel>(QStringLiteral("b"));
    std::vector<std::string> order;
    DividerEvent fired;
    splitter.moved_listener += [&order](const int& pos) {
        order.push_back("moved " + std::to_string(pos));
    };
    splitter.divider_listener += [&order, &fired](const DividerEvent& ev) {
        order.emplace_back("divider");
        fired = ev;
    };
    Q_EMIT splitter.splitterMoved(120, 1);
    EXPECT_EQ(order, (std::vector<std::string>{"moved 120", "divider"}));
    EXPECT_EQ(fired.splitter, &splitter);
    EXPECT_EQ(fired.index, 1);
    EXPECT_EQ(fired.pos, 120);
}

TEST(GDock, passes_a_layout_event_to_its_content) {
    std::vector<QWidget*> order;
    GDock dock(QStringLiteral("Dock"));
    LayoutEvent ev;
    dock.do_layout(ev);
    dock.setWidget(new QWidget);
    dock.do_layout(ev);
    auto* const probe = new LayoutProbe(order);
    dock.setWidget(probe);
    dock.do_layout(ev);
    EXPECT_EQ(order, std::vector<QWidget*>{probe});
}

TEST(GStatusBar, keeps_a_generated_widget_behind_messages) {
    GStatusBar bar;
    bar.show();
    const GLabel* const label = bar.gen<GLabel>(QStringLiteral("connected"));
    bar.showMessage(QStringLiteral("message"));
    EXPECT_TRUE(label->isVisible());
    EXPECT_EQ(label->parentWidget(), &bar);
}
