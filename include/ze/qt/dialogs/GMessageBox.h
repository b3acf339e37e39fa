// Messages and questions to the user. A box is shown without an event loop of its own: the answer
// comes through the listeners. It deletes itself when it is closed.
#pragma once

#include "ze/tools/Listener.h"

#include <QMessageBox>

namespace ze::qt {

class GMessageBox : public QMessageBox {
public:
    Listener<int> finished_listener;  ///< carries the QMessageBox::StandardButton that was pressed
    Listener<NO_PAYLOAD> rejected_listener;
    Listener<NO_PAYLOAD> accepted_listener;

    /// Each makes a box, shows it and returns it. With a parent it takes the parent's palette and
    /// blocks the parent's window until it is closed.
    static GMessageBox* show_info(QWidget* parent, const QString& title, const QString& text);
    static GMessageBox* show_error(QWidget* parent, const QString& title, const QString& text);
    static GMessageBox* ask_yes_no(QWidget* parent, const QString& title, const QString& text,
                                   QMessageBox::Icon icon = QMessageBox::Question);

protected:
    void hideEvent(QHideEvent* ev) override;

private:
    GMessageBox(Icon icon, const QString& title, const QString& text, StandardButtons buttons,
                QWidget* parent);

    void prepare_listener();
};

}  // namespace ze::qt
