#include "ze/tools/GMD5.h"

#include "ze/log/exits.h"
#include "ze/tools/format.h"

#include <QByteArrayView>
#include <QString>

namespace ze::checksum {

GMD5::GMD5() : hash(QCryptographicHash::Md5) {}

void GMD5::add_bytes(const void* bytes, unsigned long long size) {
    if (size == 0) {
        return;
    }
    if (bytes == nullptr) {
        nullPointerHandling("src/ze/tools/GMD5", __LINE__, QStringLiteral("bytes == NULL"));
    }
    hash.addData(QByteArrayView(static_cast<const char*>(bytes), static_cast<qsizetype>(size)));
}

void GMD5::add_string(const QString& text) {
    const std::string utf8 = str::to_utf8(text);
    const quint64 size = utf8.size();
    add_bytes(&size, sizeof(size));
    add_bytes(utf8.data(), size);
}

QByteArray GMD5::get_result() const {
    return hash.result();
}

QString GMD5::get_result_as_string(bool upper_case) const {
    return hash_string(get_result(), upper_case ? UPPER_CASE : 0);
}

QString GMD5::hash_string(const QByteArray& digest, int flags) {
    QByteArray hex =
        (flags & WITH_BLANKS) != 0 && !digest.isEmpty() ? digest.toHex(' ') + ' ' : digest.toHex();
    return QString::fromLatin1((flags & UPPER_CASE) != 0 ? hex.toUpper() : hex);
}

QString GMD5::hash_string_x(const QByteArray& digest, bool) {
    return hash_string(digest, UPPER_CASE | WITH_BLANKS);
}

}  // namespace ze::checksum
