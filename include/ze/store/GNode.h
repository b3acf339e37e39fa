// A tree of attribute records with named children. Settings are such trees; one tree is stored as
// one base64 text, whose form stays the same so that a text written today opens tomorrow.
#pragma once

#include "ze/store/GAttributes.h"

#include <QByteArray>
#include <QString>

#include <map>

namespace ze::checksum {
class GMD5;
}

namespace ze::store {

class GNode : public GAttributes {
public:
    /// Sorted by key, case-sensitive.
    std::map<QString, GNode> children;

    /// The child under `key`, created empty if absent.
    GNode& ensure_node(const QString& key) { return children[key]; }
    GNode& operator[](const QString& key) { return ensure_node(key); }

    /// Writes the attributes, then the children in key order. Written at any depth, read down to
    /// 256.
    void to_stream(QDataStream& stream) const;

    /// Replaces the node by that of the stream. False after a read error, with a log line for each
    /// node from the broken one up; what was read until then stays.
    bool from_stream(QDataStream& stream);

    /// The tree as base64 text.
    [[nodiscard]] static QString to_qstring(const GNode& node);

    /// Reads to_qstring's text. A text that cannot be read gives an empty or partial node and log
    /// lines.
    [[nodiscard]] static GNode from_qstring(const QString& text);

    [[nodiscard]] QString to_base_64_string() const { return to_qstring(*this); }
    [[nodiscard]] static GNode from_base_64_string(const QString& text) {
        return from_qstring(text);
    }
    [[nodiscard]] static qint64 get_base64_length(const GNode& node) {
        return to_qstring(node).size();
    }

    /// Feeds the texts of the attributes and the keys of the children into the digest.
    void to_md5(checksum::GMD5& digest) const;
    [[nodiscard]] QByteArray get_md5() const;

    /// The digest in hex; `flags` as GMD5::hash_string takes them.
    [[nodiscard]] QString get_md5_string(int flags) const;

    /// Compares the digests of both trees: cheap to write, not to call. Values that print alike are
    /// equal.
    [[nodiscard]] bool equals(const GNode& other) const;
    [[nodiscard]] bool operator==(const GNode& other) const { return equals(other); }

    /// Logs the tree, children indented.
    void show(unsigned indent) const;

    /// One value as text for display.
    [[nodiscard]] static QString to_qstring(const QVariant& value);

private:
    bool from_stream_at(QDataStream& stream, int depth);
    bool read_children(QDataStream& stream, qint32 count, int depth);
};

}  // namespace ze::store
