#include "stored_variants.h"

#include <QRegularExpression>
#include <QString>

namespace ze::qt {

namespace {

// The type number comes first: a colour, a float, or one of those from QDate to QPointF, of which
// Qt reads the two texts piece by piece.
QString without_safe_variants(QString text) {
    static const QRegularExpression safe(QStringLiteral(
        R"((@Variant\(\\0\\0\\0\\x(43|87|[ef]|1[0-9a])|@DateTime\(\\0\\0\\0\\x10)(?![0-9a-fA-F]))"));
    return text.remove(safe);
}

QChar escaped_char(const QString& digits, int base) {
    // QSettings takes any number of digits, too, and keeps the lowest 16 bits.
    return QChar(static_cast<char16_t>(digits.right(6).toUInt(nullptr, base)));
}

// The letters that QSettings finds, without all that can stand between them.
QString unescaped(const QString& text) {
    static const QRegularExpression escape(
        QStringLiteral(R"(\\x([0-9a-fA-F]+)|\\([0-7]+)|\\.|["\s\x{80}-\x{ff}])"),
        QRegularExpression::DotMatchesEverythingOption);
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

}  // namespace

bool has_unsafe_variant(const QByteArray& file) {
    // As nearly every file is: the start does not grow with the size of the settings.
    if (!file.contains('@') && !file.contains('\\')) {
        return false;
    }
    const QString text = unescaped(without_safe_variants(QString::fromLatin1(file)));
    return text.contains(QLatin1String("@Variant(")) || text.contains(QLatin1String("@DateTime("));
}

}  // namespace ze::qt
