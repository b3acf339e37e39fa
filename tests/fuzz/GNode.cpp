// The input is the text of a node, and then once more the bytes that such a text encodes, since a
// mutation of base64 text rarely meets the same field twice.

#include "ze/store/GNode.h"

#include "support/check.h"

#include <QByteArray>
#include <QString>

#include <cstdint>

using ze::store::GNode;

namespace {

void show_values(const GNode& node) {
    for (const auto& [key, value] : node.attributes()) {
        static_cast<void>(GNode::to_qstring(value));
    }
    for (const auto& [key, child] : node.children) {
        show_values(child);
    }
}

void read(const QString& text) {
    const GNode node = GNode::from_qstring(text);
    show_values(node);
    node.show(0);

    // The first reading may mend a value, such as a moment without a time zone; the second finds
    // nothing to mend.
    const GNode settled = GNode::from_qstring(GNode::to_qstring(node));
    const GNode read_back = GNode::from_qstring(GNode::to_qstring(settled));
    FUZZ_CHECK(GNode::to_qstring(read_back) == GNode::to_qstring(settled));
    FUZZ_CHECK(read_back == settled);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    read(QString::fromUtf8(bytes));
    read(QString::fromLatin1(bytes.toBase64()));
    return 0;
}
