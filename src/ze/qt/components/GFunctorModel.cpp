#include "ze/qt/components/GFunctorModel.h"

#include <utility>

namespace ze::qt {

GFunctorModel::GFunctorModel(QObject* parent) : QAbstractListModel(parent) {}

int GFunctorModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(functors.size());
}

QVariant GFunctorModel::data(const QModelIndex& index, int role) const {
    const GFunctor* const functor = get_functor_at(index.row());
    return functor != nullptr && role == Qt::DisplayRole ? QVariant(functor->text) : QVariant();
}

void GFunctorModel::set_functors(std::vector<GFunctor> theFunctors) {
    beginResetModel();
    functors = std::move(theFunctors);
    endResetModel();
}

void GFunctorModel::add_functor(const GFunctor& functor) {
    const int row = rowCount();
    beginInsertRows({}, row, row);
    functors.push_back(functor);
    endInsertRows();
}

const GFunctor* GFunctorModel::get_functor_at(int row) const noexcept {
    const bool flagInside = row >= 0 && static_cast<std::size_t>(row) < functors.size();
    return flagInside ? &functors[static_cast<std::size_t>(row)] : nullptr;
}

void GFunctorModel::trigger_at(int row) const {
    const GFunctor* const functor = get_functor_at(row);
    if (functor == nullptr) {
        return;
    }
    // The function may change this model: a copy is what runs.
    if (const auto fn = functor->fn) {
        fn();
    }
}

}  // namespace ze::qt
