#include "read_value.h"

#include "ze/store/GType.h"

#include <QDataStream>
#include <QMetaType>
#include <QStringList>

namespace ze::store {

namespace {

QVariant read_value_at(QDataStream& stream, int depth);

QVariant corrupt(QDataStream& stream) {
    stream.setStatus(QDataStream::ReadCorruptData);
    return {};
}

// Types whose reader takes a fixed number of bytes, or one text or byte array. Qt reads those piece
// by piece, so that a length of 4 GB in a short stream costs one piece and ends as a read error.
bool is_plain(int typeId) {
    switch (typeId) {
        case QMetaType::Bool:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Double:
        case QMetaType::Float:
        case QMetaType::Long:
        case QMetaType::ULong:
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::Char:
        case QMetaType::SChar:
        case QMetaType::UChar:
        case QMetaType::QChar:
        case QMetaType::QString:
        case QMetaType::QByteArray:
        case QMetaType::QDate:
        case QMetaType::QTime:
        case QMetaType::QDateTime:
        case QMetaType::QUrl:
        case QMetaType::QUuid:
        case QMetaType::QLocale:
        case QMetaType::QPoint:
        case QMetaType::QPointF:
        case QMetaType::QSize:
        case QMetaType::QSizeF:
        case QMetaType::QRect:
        case QMetaType::QRectF:
        case QMetaType::QLine:
        case QMetaType::QLineF:
        case QMetaType::QColor:
            return true;
        default:
            return false;
    }
}

// Qt reserves room for the stated number of strings before it reads the first one.
QVariant read_string_list(QDataStream& stream) {
    quint32 count = 0;
    stream >> count;
    QStringList list;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        QString text;
        stream >> text;
        list.append(text);
    }
    return list;
}

QVariant read_list(QDataStream& stream, int depth) {
    quint32 count = 0;
    stream >> count;
    QVariantList list;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        list.append(read_value_at(stream, depth + 1));
    }
    return list;
}

template <typename Map>
QVariant read_map(QDataStream& stream, int depth) {
    quint32 count = 0;
    stream >> count;
    Map map;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        QString key;
        stream >> key;
        map.insert(key, read_value_at(stream, depth + 1));
    }
    return map;
}

QVariant read_plain(QDataStream& stream, QMetaType type) {
    QVariant value(type);
    if (!type.load(stream, value.data())) {
        return corrupt(stream);
    }
    return value;
}

// Types that are not Qt's own are stored by name, with its closing zero byte.
QMetaType read_user_type(QDataStream& stream) {
    QByteArray name;
    stream >> name;
    return QMetaType::fromName(name.constData());
}

QVariant read_content(QDataStream& stream, QMetaType type, int depth) {
    switch (type.id()) {
        case QMetaType::QStringList:
            return read_string_list(stream);
        case QMetaType::QVariantList:
            return read_list(stream, depth);
        case QMetaType::QVariantMap:
            return read_map<QVariantMap>(stream, depth);
        case QMetaType::QVariantHash:
            return read_map<QVariantHash>(stream, depth);
        default:
            break;
    }
    if (is_plain(type.id()) || type == QMetaType::fromType<GType>()) {
        return read_plain(stream, type);
    }
    return corrupt(stream);
}

QVariant read_value_at(QDataStream& stream, int depth) {
    quint32 typeId = QMetaType::UnknownType;
    bool isNull = false;
    stream >> typeId >> isNull;
    if (stream.status() != QDataStream::Ok || typeId == QMetaType::UnknownType) {
        return {};
    }
    if (depth >= maxStreamDepth || typeId > QMetaType::User) {
        return corrupt(stream);
    }
    const QMetaType type =
        typeId == QMetaType::User ? read_user_type(stream) : QMetaType(static_cast<int>(typeId));
    const QVariant value = read_content(stream, type, depth);
    return isNull && value.isValid() ? QVariant(type) : value;
}

}  // namespace

QVariant read_value(QDataStream& stream) {
    return read_value_at(stream, 0);
}

}  // namespace ze::store
