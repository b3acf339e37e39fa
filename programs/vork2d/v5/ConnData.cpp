#include "ConnData.h"

#include "ze/log/pp.h"

#include <QStringList>

namespace vork2d::v5 {

QString part_of_login(const QString& login, qsizetype index, const char* failure) {
    const QStringList parts = login.split(QLatin1Char(':'));
    if (parts.size() < 2) {
        ze::pp_error(failure);
        return login;
    }
    return parts[index];
}

}  // namespace vork2d::v5
