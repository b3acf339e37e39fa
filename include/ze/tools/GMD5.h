// MD5 digests that tell whether two records are equal. They protect nothing.
#pragma once

#include <QByteArray>
#include <QCryptographicHash>

class QString;

namespace ze::checksum {

class GMD5 {
public:
    /// Bits of `hash_string`.
    enum FLAGS : int {
        UPPER_CASE = 2,   ///< "0A" in the place of "0a"
        WITH_BLANKS = 4,  ///< a blank behind each byte, the last one too
    };

    GMD5();

    /// A null pointer with a size above 0 ends the program.
    void add_bytes(const void* bytes, unsigned long long size);

    /// Adds the number of UTF-8 bytes as 64 bits in machine order, then the bytes, so that the
    /// digest of two texts differs from that of both joined, and from the plain MD5 of the text.
    void add_string(const QString& text);

    /// The 16 bytes of the digest of all that was added so far.
    [[nodiscard]] QByteArray get_result() const;
    [[nodiscard]] QString get_result_as_string(bool upper_case) const;

    /// A digest as hex text. The bytes are written as they are and not hashed again.
    [[nodiscard]] static QString hash_string(const QByteArray& digest, int flags);

    /// The same in upper case with a blank behind each byte; the flag has no effect.
    [[nodiscard]] static QString hash_string_x(const QByteArray& digest, bool);

private:
    QCryptographicHash hash;
};

}  // namespace ze::checksum
