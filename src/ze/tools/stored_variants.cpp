#include "stored_variants.h"

#include "ze/store/read_value.h"

#include <QByteArrayView>
#include <QDataStream>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <cctype>
#include <optional>

namespace ze::qt {

namespace {

constexpr QLatin1String VARIANT("@Variant(");
constexpr QLatin1String DATE_TIME("@DateTime(");

// Without either byte no letter of a value becomes an '@'. So is nearly every line, and the start
// does not grow with the size of the settings.
bool may_hold_stream(QByteArrayView text) {
    return text.contains('@') || text.contains('\\');
}

QChar escaped_char(const QString& digits, int base) {
    // QSettings takes any number of digits, too, and keeps the lowest 16 bits.
    return QChar(static_cast<char16_t>(digits.right(6).toUInt(nullptr, base)));
}

// The letters that QSettings finds, without all that can stand between them.
QString letters(QByteArrayView bytes) {
    static const QRegularExpression escape(
        QStringLiteral(R"(\\x([0-9a-fA-F]+)|\\([0-7]+)|\\.|["\s\x{80}-\x{ff}])"),
        QRegularExpression::DotMatchesEverythingOption);
    const QString text = QString::fromLatin1(bytes);
    QString plain;
    qsizetype end = 0;
    for (const QRegularExpressionMatch& match : escape.globalMatch(text)) {
        plain += QStringView(text).sliced(end, match.capturedStart() - end);
        if (match.hasCaptured(1)) {
            plain += escaped_char(match.captured(1), 16);
        } else if (match.hasCaptured(2)) {
            plain += escaped_char(match.captured(2), 8);
        }
        end = match.capturedEnd();
    }
    plain += QStringView(text).sliced(end);
    return plain;
}

bool names_stream(QByteArrayView bytes) {
    if (!may_hold_stream(bytes)) {
        return false;
    }
    const QString text = letters(bytes);
    return text.contains(VARIANT) || text.contains(DATE_TIME);
}

// A quotation mark or a backslash that is left open takes the next line into the value.
bool is_closed(QByteArrayView line) {
    bool isQuoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] == '"') {
            isQuoted = !isQuoted;
        } else if (line[i] == '\\') {
            ++i;  // what stands behind is no mark
        }
        if (i == line.size() || line[i] == '\r') {
            return false;
        }
    }
    return !isQuoted;
}

/// Reads the value behind a key in the form in which QSettings writes it. Any other form gives
/// nothing: how QSettings reads it is not certain.
class StoredValue {
public:
    explicit StoredValue(QByteArrayView bytes) : rest(bytes) {}

    [[nodiscard]] std::optional<QStringList> elements() {
        QStringList texts;
        do {
            const std::optional<QString> text = element();
            if (!text) {
                return std::nullopt;
            }
            texts.append(*text);
        } while (skip(','));
        return rest.isEmpty() ? std::optional(texts) : std::nullopt;
    }

private:
    bool skip(char c) {
        const bool found = rest.startsWith(c);
        rest = rest.sliced(found ? 1 : 0);
        return found;
    }

    std::optional<QString> element() {
        while (skip(' ')) {
        }
        const QByteArrayView start = rest;
        const bool isQuoted = skip('"');
        QString text;
        while (!rest.isEmpty() && rest.front() != '"' && (isQuoted || rest.front() != ',')) {
            const std::optional<QChar> next = letter();
            if (!next || (*next == QLatin1Char(';') && !isQuoted)) {
                return std::nullopt;
            }
            text += *next;
        }
        const bool isWhole = !isQuoted || skip('"');
        return isWhole && is_plain_utf8(start.chopped(rest.size())) ? std::optional(text)
                                                                    : std::nullopt;
    }

    // A byte that is no ASCII stands for itself: only what follows an '@' has a meaning here.
    std::optional<QChar> letter() {
        if (skip('\\')) {
            return escaped();
        }
        const QChar c = QLatin1Char(rest.front());
        rest = rest.sliced(1);
        return c < u' ' ? std::nullopt : std::optional(c);
    }

    std::optional<QChar> escaped() {
        static constexpr QByteArrayView MARKS("abfnrtv\"\\");
        static constexpr QByteArrayView MEANT("\a\b\f\n\r\t\v\"\\");
        if (skip('x')) {
            return hexadecimal();
        }
        if (skip('0')) {
            const bool goesOn = !rest.isEmpty() && rest.front() >= '0' && rest.front() <= '7';
            return goesOn ? std::nullopt : std::optional(QChar(u'\0'));
        }
        const qsizetype place = rest.isEmpty() ? -1 : MARKS.indexOf(rest.front());
        if (place < 0) {
            return std::nullopt;
        }
        rest = rest.sliced(1);
        return QLatin1Char(MEANT[place]);
    }

    std::optional<QChar> hexadecimal() {
        constexpr qsizetype LONGEST = 4;
        const auto* const end = std::find_if_not(rest.begin(), rest.end(), [](char c) {
            return std::isxdigit(static_cast<unsigned char>(c)) != 0;
        });
        const QByteArrayView digits = rest.first(end - rest.begin());
        rest = rest.sliced(digits.size());
        if (digits.isEmpty() || digits.size() > LONGEST) {
            return std::nullopt;
        }
        return QChar(static_cast<char16_t>(digits.toUInt(nullptr, 16)));
    }

    // The decoder drops a byte order mark and joins bytes that an escape parts.
    static bool is_plain_utf8(QByteArrayView bytes) {
        return !bytes.contains("\xEF\xBB\xBF") && QString::fromUtf8(bytes).toUtf8() == bytes;
    }

    QByteArrayView rest;
};

bool is_harmless_stream(const QString& bytes) {
    const QByteArray content = bytes.toLatin1();
    QDataStream stream(content);
    stream.setVersion(QDataStream::Qt_4_0);  // as QSettings writes it for ever
    (void)store::read_value(stream);
    return stream.status() == QDataStream::Ok;
}

bool is_harmless_element(const QString& text) {
    if (!text.trimmed().endsWith(QLatin1Char(')'))) {
        return true;  // a plain text
    }
    if (text.startsWith(DATE_TIME)) {
        // A date with a time: Qt reads it piece by piece.
        return text.sliced(DATE_TIME.size()).startsWith(QLatin1String("\0\0\0\x10", 4));
    }
    return !text.startsWith(VARIANT) || is_harmless_stream(text.sliced(VARIANT.size()));
}

// A line without a key has no value to read.
bool is_harmless_line(QByteArrayView line) {
    static const QRegularExpression key(QStringLiteral(R"(\A(?:[\w.%-]|\\[\w.%-])+=)"));
    if (!line.contains('=')) {
        return true;
    }
    const qsizetype length = key.match(QString::fromLatin1(line)).capturedLength();
    if (length == 0) {
        return false;
    }
    const std::optional<QStringList> elements = StoredValue(line.sliced(length)).elements();
    return elements && std::all_of(elements->begin(), elements->end(), is_harmless_element);
}

}  // namespace

QByteArray without_unsafe_variants(const QByteArray& file) {
    if (!may_hold_stream(file)) {
        return file;
    }
    QByteArray kept;
    bool isWhole = true;
    for (qsizetype start = 0; start < file.size();) {
        const qsizetype found = file.indexOf('\n', start);
        const qsizetype end = found < 0 ? file.size() : found + 1;
        QByteArrayView line = QByteArrayView(file).sliced(start, end - start).trimmed();
        isWhole = isWhole && is_closed(line);
        if (!names_stream(line) || is_harmless_line(line)) {
            kept += QByteArrayView(file).sliced(start, end - start);
        }
        start = end;
    }
    if (isWhole) {
        return kept;
    }
    return names_stream(file) ? QByteArray() : file;
}

}  // namespace ze::qt
