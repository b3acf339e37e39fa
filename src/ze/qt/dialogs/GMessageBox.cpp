#include "ze/qt/dialogs/GMessageBox.h"

#include "ze/log/pp.h"
#include "ze/qt/guitools/GGui.h"

namespace ze::qt {

GMessageBox::GMessageBox(Icon icon, const QString& title, const QString& text,
                         StandardButtons buttons, QWidget* parent)
    : QMessageBox(icon, title, text, buttons, parent) {
    setAttribute(Qt::WA_DeleteOnClose);
    if (parent != nullptr) {
        setPalette(parent->palette());
        setWindowModality(Qt::WindowModal);
    }
    prepare_listener();
    show();
}

void GMessageBox::prepare_listener() {
    connect(this, &QMessageBox::finished, this,
            [this](int result) { finished_listener.fire_event(result, FIRE_DIRECT); });
    connect(this, &QMessageBox::rejected, this,
            [this] { rejected_listener.fire_event({}, FIRE_DIRECT); });
    connect(this, &QMessageBox::accepted, this,
            [this] { accepted_listener.fire_event({}, FIRE_DIRECT); });
}

GMessageBox* GMessageBox::show_info(QWidget* parent, const QString& title, const QString& text) {
    pp("GMessageBox::show_info");
    return new GMessageBox(QMessageBox::Information, title, text, QMessageBox::Ok, parent);
}

GMessageBox* GMessageBox::show_error(QWidget* parent, const QString& title, const QString& text) {
    pp("GMessageBox::show_error:$", text);
    return new GMessageBox(QMessageBox::Critical, title, text, QMessageBox::Ok, parent);
}

GMessageBox* GMessageBox::ask_yes_no(QWidget* parent, const QString& title, const QString& text,
                                     QMessageBox::Icon icon) {
    return new GMessageBox(icon, title, text, QMessageBox::Yes | QMessageBox::No, parent);
}

void GMessageBox::hideEvent(QHideEvent* ev) {
    QMessageBox::hideEvent(ev);
    activate_main_window_later(this);
}

}  // namespace ze::qt
