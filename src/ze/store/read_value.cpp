#include "ze/store/read_value.h"

#include "ze/store/GType.h"

#include <QDataStream>
#include <QMetaType>
#include <QRect>
#include <QStringList>
#include <QUuid>

#include <limits>

namespace ze::store {

namespace {

constexpr quint32 NO_TYPE = std::numeric_limits<quint32>::max();

QVariant read_value_at(QDataStream& stream, int depth);

QVariant corrupt(QDataStream& stream) {
    stream.setStatus(QDataStream::ReadCorruptData);
    return {};
}

// In the form of Qt 4.0 the types up to QLineF have the numbers of today.
quint32 type_of_qt_4(quint32 typeId) {
    constexpr quint32 FONT = 64;
    constexpr quint32 COLOR = 67;
    constexpr quint32 USER = 127;
    constexpr quint32 FIRST_NUMBER = 128;  // void*, and behind it the plain numbers from long on
    constexpr quint32 LAST_NUMBER = FIRST_NUMBER + QMetaType::Float - QMetaType::VoidStar;
    switch (typeId) {
        case FONT:
            return QMetaType::QFont;
        case COLOR:
            return QMetaType::QColor;
        case USER:
            return QMetaType::User;
        default:
            break;
    }
    if (typeId > FIRST_NUMBER && typeId <= LAST_NUMBER) {
        return typeId - FIRST_NUMBER + QMetaType::VoidStar;
    }
    return typeId <= QMetaType::QVariantHash ? typeId : NO_TYPE;
}

bool is_qt_4(const QDataStream& stream) {
    return stream.version() == QDataStream::Qt_4_0;
}

// Types whose reader takes a fixed number of bytes, or one text or byte array. Qt reads those piece
// by piece, so that a length of 4 GB in a short stream costs one piece and ends as a read error.
// A program without Qt Gui knows no colour, and Qt prints a warning of its own about a type it does
// not know.
bool is_plain(quint32 typeId, bool isQt4) {
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
        case QMetaType::QFont:  // later it holds a list of families
            return isQt4 && QMetaType::isRegistered(QMetaType::QFont);
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

// Types that are not Qt's own, or were not in Qt 4.0, are stored by name, with its closing zero
// byte.
QVariant read_user_value(QDataStream& stream) {
    QByteArray name;
    stream >> name;
    if (is_qt_4(stream) && qstrcmp(name.constData(), "QUuid") == 0) {
        return read_plain(stream, QMetaType::fromType<QUuid>());
    }
    return is_gtype_name(name) ? read_plain(stream, QMetaType::fromType<GType>()) : corrupt(stream);
}

QVariant read_nothing(QDataStream& stream) {
    QString unused;
    if (is_qt_4(stream)) {
        stream >> unused;
    }
    return {};
}

QVariant read_content(QDataStream& stream, quint32 typeId, int depth) {
    switch (typeId) {
        case QMetaType::UnknownType:
            return read_nothing(stream);
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
    return is_plain(typeId, is_qt_4(stream))
               ? read_plain(stream, QMetaType(static_cast<int>(typeId)))
               : corrupt(stream);
}

QVariant read_value_at(QDataStream& stream, int depth) {
    quint32 typeId = QMetaType::UnknownType;
    bool isNull = false;
    stream >> typeId;
    if (is_qt_4(stream)) {
        typeId = type_of_qt_4(typeId);
    } else {
        stream >> isNull;
    }
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
