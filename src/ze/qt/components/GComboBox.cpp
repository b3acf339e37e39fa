#include "ze/qt/components/GComboBox.h"

#include "ze/log/exits.h"
#include "ze/qt/components/GFunctorModel.h"

#include <QAbstractItemView>
#include <QSignalBlocker>

#include <utility>

namespace ze::qt {

GComboBox::GComboBox(QWidget* parent) : QComboBox(parent) {
    connect(this, &QComboBox::currentTextChanged, this,
            [this](const QString& text) { current_text_listener.fire_event(text, FIRE_DIRECT); });
    connect(this, &QComboBox::currentIndexChanged, this,
            [this](int index) { current_index_listener.fire_event(index, FIRE_DIRECT); });
}

void GComboBox::add_functor(const GFunctor& functor) {
    // The first entry becomes the current one by itself: that is no choice of the user.
    const QSignalBlocker blocker(this);
    if (functorModel == nullptr) {
        set_functor_model(new GFunctorModel(this));
    }
    functorModel->add_functor(functor);
}

void GComboBox::add_functor(const QString& name, std::function<void()> fn) {
    add_functor(GFunctor{name, std::move(fn)});
}

void GComboBox::set_functor_model(GFunctorModel* pModel) {
    if (pModel == nullptr) {
        nullPointerHandling("src/ze/qt/components/GComboBox", __LINE__,
                            QStringLiteral("pModel == NULL"));
    }
    disconnect(trigger);
    functorModel = pModel;
    setModel(pModel);
    trigger = connect(this, &QComboBox::currentIndexChanged, pModel,
                      [pModel](int index) { pModel->trigger_at(index); });
}

void GComboBox::showPopup() {
    // The entries take only what the list has of its own; the rest would be the application's.
    view()->setPalette(window()->palette());
    QComboBox::showPopup();
}

}  // namespace ze::qt
