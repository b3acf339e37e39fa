#include "ze/store/GAttributes.h"

#include "ze/log/log.h"
#include "ze/store/read_value.h"

#include <QDataStream>

namespace ze::store {

template <typename T>
T GAttributes::get(const QString& key, const T& fallback) const {
    const auto found = attributes_.find(key);
    if (found == attributes_.end()) {
        pp_trace("GAttributes::get, '$' not found", key);
        return fallback;
    }
    const QVariant& value = found->second;
    if (value.isNull() || value.metaType() != QMetaType::fromType<T>()) {
        pp_trace("GAttributes::get, wrong type");
        return fallback;
    }
    return value.value<T>();
}

template QString GAttributes::get(const QString&, const QString&) const;
template bool GAttributes::get(const QString&, const bool&) const;
template int GAttributes::get(const QString&, const int&) const;
template unsigned GAttributes::get(const QString&, const unsigned&) const;
template QByteArray GAttributes::get(const QString&, const QByteArray&) const;
template GType GAttributes::get(const QString&, const GType&) const;

QString GAttributes::to_string() const {
    QString text;
    for (const auto& [key, value] : attributes_) {
        text += str::qprintF("$=$,", key, value);
    }
    text.chop(1);
    return text;
}

void GAttributes::to_stream(QDataStream& stream) const {
    stream << static_cast<qint32>(attributes_.size());
    for (const auto& [key, value] : attributes_) {
        stream << key << value;
    }
}

bool GAttributes::from_stream(QDataStream& stream) {
    attributes_.clear();
    qint32 count = 0;
    stream >> count;
    if (stream.status() != QDataStream::Ok) {
        pp_error("GAttributes::from_stream, read error!");
        return false;
    }
    // A count that promises more than the stream holds ends at the first key that is not there.
    for (qint32 i = 0; i < count; ++i) {
        QString key;
        stream >> key;
        if (stream.status() != QDataStream::Ok) {
            pp_error("GAttributes::from_stream, key read error!, at index:$", i);
            return false;
        }
        QVariant value = read_value(stream);
        if (stream.status() != QDataStream::Ok) {
            pp_error("GAttributes::from_stream, val read error!, at index:$", i);
            return false;
        }
        attributes_.emplace_hint(attributes_.end(), key, std::move(value));
    }
    return true;
}

}  // namespace ze::store
