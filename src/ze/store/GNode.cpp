#include "ze/store/GNode.h"

#include "ze/log/log.h"
#include "ze/log/pp.h"
#include "ze/store/read_value.h"
#include "ze/tools/GMD5.h"
#include "ze/tools/convert.h"

#include <QDataStream>
#include <QIODevice>
#include <QPoint>
#include <QRect>
#include <QSize>

namespace ze::store {

namespace {

constexpr qint32 MAGIC_NUMBER = 0x474E4F44;  // "GNOD"
constexpr quint16 FORMAT_VERSION = 1;

// The default of Qt 6.0 to 6.5, in which the stored texts are written. Fixed, so that a program
// built with a later Qt writes the same bytes and reads the ones that are there.
constexpr auto STREAM_VERSION = QDataStream::Qt_6_0;

bool read_header(QDataStream& stream) {
    qint32 magic = 0;
    stream >> magic;
    if (stream.status() != QDataStream::Ok) {
        pp_error("from_qstring, failed to read magic");
        return false;
    }
    if (magic != MAGIC_NUMBER) {
        pp_error("from_qstring, wrong magic:$", magic);
        return false;
    }
    quint16 version = 0;
    stream >> version;
    if (stream.status() != QDataStream::Ok) {
        pp_error("from_qstring, failed to read version");
        return false;
    }
    if (version != FORMAT_VERSION) {
        pp_error("from_qstring, unsupported version:$", version);
        return false;
    }
    return true;
}

}  // namespace

void GNode::to_stream(QDataStream& stream) const {
    GAttributes::to_stream(stream);
    stream << static_cast<qint32>(children.size());
    for (const auto& [key, child] : children) {
        stream << key;
        child.to_stream(stream);
    }
}

bool GNode::from_stream(QDataStream& stream) {
    return from_stream_at(stream, 1);
}

bool GNode::from_stream_at(QDataStream& stream, int depth) {
    // A failure needs no look here: it stays in the stream's status, which the next read shows.
    GAttributes::from_stream(stream);
    children.clear();
    qint32 count = 0;
    stream >> count;
    if (stream.status() != QDataStream::Ok) {
        pp_error("GAttributes::from_stream, read error!");
        return false;
    }
    return read_children(stream, count, depth);
}

bool GNode::read_children(QDataStream& stream, qint32 count, int depth) {
    for (qint32 i = 0; i < count; ++i) {
        QString key;
        stream >> key;
        if (stream.status() != QDataStream::Ok) {
            pp_error("GAttributes::from_stream, key read error!, at index:$", i);
            return false;
        }
        GNode child;
        if (depth < MAX_STREAM_DEPTH) {
            child.from_stream_at(stream, depth + 1);
        } else {
            stream.setStatus(QDataStream::ReadCorruptData);
        }
        if (stream.status() != QDataStream::Ok) {
            pp_error("GAttributes::from_stream, val read error!, at index:$", i);
            return false;
        }
        children.emplace_hint(children.end(), key, std::move(child));
    }
    return true;
}

QString GNode::to_qstring(const GNode& node) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(STREAM_VERSION);
    stream << MAGIC_NUMBER << FORMAT_VERSION;
    node.to_stream(stream);
    return QString::fromLatin1(bytes.toBase64());
}

GNode GNode::from_qstring(const QString& text) {
    GNode node;
    if (text.isEmpty()) {
        pp_warn("from_qstring, empty string");
        return node;
    }
    const QByteArray bytes = QByteArray::fromBase64(text.toLatin1());
    if (bytes.isEmpty()) {
        pp_error("from_qstring, base64 decode failed");
        return node;
    }
    QDataStream stream(bytes);
    stream.setVersion(STREAM_VERSION);
    if (!read_header(stream)) {
        return node;
    }
    if (!node.from_stream(stream)) {
        pp_error("from_qstring, node deserialization failed");
    }
    if (stream.status() != QDataStream::Ok) {
        pp_warn("from_qstring, stream ended with non-ok status");
    }
    return node;
}

void GNode::to_md5(checksum::GMD5& digest) const {
    digest.add_string(to_string());
    for (const auto& [key, child] : children) {
        digest.add_string(key);
        child.to_md5(digest);
    }
}

QByteArray GNode::get_md5() const {
    checksum::GMD5 digest;
    to_md5(digest);
    return digest.get_result();
}

QString GNode::get_md5_string(int flags) const {
    return checksum::GMD5::hash_string(get_md5(), flags);
}

bool GNode::equals(const GNode& other) const {
    constexpr int FLAGS = checksum::GMD5::UPPER_CASE | checksum::GMD5::WITH_BLANKS;
    return get_md5_string(FLAGS) == other.get_md5_string(FLAGS);
}

void GNode::show(unsigned indent) const {
    pp_format(log::DEBUG, indent, "{$}", to_string());
    for (const auto& [key, child] : children) {
        pp_format(log::DEBUG, indent + 2, "{$}", key);
        child.show(indent + 4);
    }
}

QString GNode::to_qstring(const QVariant& value) {
    if (value.metaType() == QMetaType::fromType<GType>()) {
        return value.value<GType>().to_string();
    }
    switch (value.typeId()) {
        case QMetaType::QPoint:
            return str::qprintF("$", value.toPoint());
        case QMetaType::QPointF:
            return str::qprintF("$", value.toPointF());
        case QMetaType::QSize:
            return str::qprintF("$", value.toSize());
        case QMetaType::QSizeF:
            return str::qprintF("$", value.toSizeF());
        case QMetaType::QRect:
            return str::qprintF("$", value.toRect());
        case QMetaType::QRectF:
            return str::qprintF("$", value.toRectF());
        case QMetaType::QByteArray: {
            constexpr unsigned BYTES_SHOWN = 10;
            return convert::to_string(convert::to_std_string(value.toByteArray(), BYTES_SHOWN));
        }
        default:
            return value.toString();
    }
}

}  // namespace ze::store
