// What a log says of a variant.
#include "ze/store/GType.h"
#include "ze/tools/convert.h"
#include "ze/tools/format.h"

#include <QByteArray>
#include <QVariant>

namespace ze::convert {

namespace {

std::string value_info(const QVariant& value) {
    if (value.typeId() == QMetaType::UnknownType) {
        return "<unknown type>";
    }
    if (value.typeId() == QMetaType::QByteArray) {
        return str::xprintF(0, ", size:$", static_cast<long long>(value.toByteArray().size()));
    }
    if (value.canConvert<QString>()) {
        return str::xprintF(0, ", value:\"$\"", value.toString());
    }
    if (value.typeId() == qMetaTypeId<store::GType>()) {
        return str::xprintF(0, ":($)", value.value<store::GType>().to_string());
    }
    return ", value=<not convertible to QString>";
}

}  // namespace

std::string to_string_basic_info(const QVariant& value) {
    const bool is_valid = value.isValid();
    std::string text = "QVariant{";
    if (is_valid) {
        text += value.typeName();
    }
    text += str::xprintF(0, "valid=$", is_valid);
    if (is_valid) {
        text += str::xprintF(0, ", null=$", value.isNull());
    }
    return text + value_info(value) + "}";
}

QString to_qstring_basic_info(const QVariant& value) {
    return to_string(to_string_basic_info(value));
}

}  // namespace ze::convert
