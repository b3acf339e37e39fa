// The input is a stream of attributes as GAttributes::to_stream writes it.

#include "ze/store/GAttributes.h"

#include "support/check.h"

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>

#include <cstdint>

using ze::store::GAttributes;
using ze::store::GType;

namespace {

void read_as_everything(const GAttributes& attributes, const QString& key) {
    static_cast<void>(attributes.get(key, QString()));
    static_cast<void>(attributes.is_flag(key, false));
    static_cast<void>(attributes.get(key, 0));
    static_cast<void>(attributes.get(key, 0u));
    static_cast<void>(attributes.get(key, QByteArray()));
    static_cast<void>(attributes.get_pod(key, ze::log::LogConfig()).to_string());
    static_cast<void>(attributes.get_pod(key, glm::mat4(1.0f)));
    static_cast<void>(attributes.get(key, GType()).to_string());
}

QByteArray bytes_of(const GAttributes& attributes) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    attributes.to_stream(stream);
    return bytes;
}

GAttributes read(const QByteArray& bytes) {
    QDataStream stream(bytes);
    GAttributes attributes;
    FUZZ_CHECK(attributes.from_stream(stream));
    return attributes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QDataStream stream(bytes);
    GAttributes attributes;
    static_cast<void>(attributes.from_stream(stream));

    for (const auto& [key, value] : attributes.attributes()) {
        read_as_everything(attributes, key);
    }
    static_cast<void>(attributes.to_string());

    // The first reading may mend a value, such as a moment without a time zone; the second finds
    // nothing to mend.
    const QByteArray settled = bytes_of(read(bytes_of(attributes)));
    FUZZ_CHECK(bytes_of(read(settled)) == settled);
    return 0;
}
