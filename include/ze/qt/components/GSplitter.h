// A splitter that generates its children and reports where its dividers are moved.
#pragma once

#include "ze/qt/Generator.h"
#include "ze/qt/Layouter.h"
#include "ze/tools/Listener.h"

#include <QSplitter>

namespace ze::qt {

class GSplitter;

/// A divider that was moved: its index, and its place in pixels from the left or the top.
struct DividerEvent {
    GSplitter* splitter = nullptr;
    int index = 0;
    int pos = 0;
};

class GSplitter : public QSplitter, public Generator, public Layouter {
public:
    Listener<int> moved_listener;
    Listener<DividerEvent> divider_listener;

    explicit GSplitter(Qt::Orientation orientation = Qt::Horizontal, QWidget* parent = nullptr);

    QWidget* add_widget(QWidget* widget) override;

    /// Passes the event on to its widgets that are layouters, in their order.
    void do_layout(LayoutEvent& ev) override;

private:
    void on_divider_moved(int pos, int index);
};

}  // namespace ze::qt
