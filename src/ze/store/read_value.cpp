#include "read_value.h"

#include "ze/store/GType.h"

#include <QDataStream>
#include <QMetaType>
#include <QRect>
#include <QStringList>

#include <limits>

namespace ze::store {

namespace {

QVariant read_value_at(QDataStream& stream, int depth);

QVariant corrupt(QDataStream& stream) {
    stream.setStatus(QDataStream::ReadCorruptData);
    return {};
}

// Types whose reader takes a fixed number of bytes, or one text or byte array. Qt reads those piece
// by piece, so that a length of 4 GB in a short stream costs one piece and ends as a read error.
// A program without Qt Gui knows no colour, and Qt prints a warning of its own about a type it does
// not know.
bool is_plain(quint32 typeId) {
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
        case QMetaType::QRectF:
        case QMetaType::QLine:
        case QMetaType::QLineF:
            return true;
        case QMetaType::QColor:
            return QMetaType::isRegistered(QMetaType::QColor);
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

// QRect computes an extent as `last - first + 1` in int.
bool is_extent(int first, int last) {
    const qint64 distance = qint64{last} - first;
    return distance >= std::numeric_limits<int>::min() &&
           distance < std::numeric_limits<int>::max();
}

// The stream holds two corners, which may lie anywhere.
QVariant read_rect(QDataStream& stream) {
    QRect rect;
    stream >> rect;
    const bool fits = is_extent(rect.left(), rect.right()) && is_extent(rect.top(), rect.bottom());
    return fits ? QVariant(rect) : corrupt(stream);
}

// The two names of GType, compared here: to look a name up, Qt first follows all the template
// brackets in it, each on the stack.
bool is_gtype_name(const QByteArray& name) {
    return qstrcmp(name.constData(), "ze::store::GType") == 0 ||
           qstrcmp(name.constData(), "zek::store::GType") == 0;
}

// Types that are not Qt's own are stored by name, with its closing zero byte.
QVariant read_user_value(QDataStream& stream) {
    QByteArray name;
    stream >> name;
    return is_gtype_name(name) ? read_plain(stream, QMetaType::fromType<GType>()) : corrupt(stream);
}

QVariant read_content(QDataStream& stream, quint32 typeId, int depth) {
    switch (typeId) {
        case QMetaType::UnknownType:
            return {};
        case QMetaType::QRect:
            return read_rect(stream);
        case QMetaType::QStringList:
            return read_string_list(stream);
        case QMetaType::QVariantList:
            return read_list(stream, depth);
        case QMetaType::QVariantMap:
            return read_map<QVariantMap>(stream, depth);
        case QMetaType::QVariantHash:
            return read_map<QVariantHash>(stream, depth);
        case QMetaType::User:
            return read_user_value(stream);
        default:
            break;
    }
    return is_plain(typeId) ? read_plain(stream, QMetaType(static_cast<int>(typeId)))
                            : corrupt(stream);
}

QVariant read_value_at(QDataStream& stream, int depth) {
    quint32 typeId = QMetaType::UnknownType;
    bool isNull = false;
    stream >> typeId >> isNull;
    if (stream.status() != QDataStream::Ok) {
        return {};
    }
    if (depth >= MAX_STREAM_DEPTH) {
        return corrupt(stream);
    }
    const QVariant value = read_content(stream, typeId, depth);
    return isNull && value.isValid() ? QVariant(value.metaType()) : value;
}

}  // namespace

QVariant read_value(QDataStream& stream) {
    return read_value_at(stream, 0);
}

}  // namespace ze::store
