// A combo box that reports through listeners and can run a function for the entry that is chosen.
#pragma once

#include "ze/tools/Listener.h"

#include <QComboBox>
#include <QPointer>

#include <functional>

namespace ze::qt {

struct GFunctor;
class GFunctorModel;

class GComboBox : public QComboBox {
public:
    Listener<QString> current_text_listener;
    Listener<int> current_index_listener;

    explicit GComboBox(QWidget* parent = nullptr);

    /// Adds an entry that runs a function when it is chosen; adding it does not choose it. The
    /// first one turns the box into one of functions: what was in it before goes.
    void add_functor(const GFunctor& functor);
    void add_functor(const QString& name, std::function<void()> fn);

    /// Shows the functions of a model, which is not owned, and runs the one that is chosen.
    void set_functor_model(GFunctorModel* pModel);

    void showPopup() override;

private:
    QPointer<GFunctorModel> functorModel;  // may be another's, and go before the box
    QMetaObject::Connection trigger;
};

}  // namespace ze::qt
