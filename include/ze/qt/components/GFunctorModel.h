// A list of functions as a model for combo boxes and list views.
#pragma once

#include "ze/qt/components/GFunctor.h"

#include <QAbstractListModel>

#include <vector>

namespace ze::qt {

class GFunctorModel : public QAbstractListModel {
public:
    explicit GFunctorModel(QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index,
                                int role = Qt::DisplayRole) const override;

    /// Replaces all functions.
    void set_functors(std::vector<GFunctor> theFunctors);
    void add_functor(const GFunctor& functor);

    /// The function at a row, or null out of range; valid until the next change of the model.
    [[nodiscard]] const GFunctor* get_functor_at(int row) const noexcept;

    /// Runs the function at a row; an empty function and a row out of range do nothing.
    void trigger_at(int row) const;

private:
    std::vector<GFunctor> functors;
};

}  // namespace ze::qt
