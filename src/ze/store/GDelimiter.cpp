#include "ze/store/GDelimiter.h"

namespace ze {

namespace {

QString join_chinese() {
    QString joined;
    for (const char* character : GDelimiter::arDelimChinese) {
        joined += QString::fromUtf8(character);
    }
    return joined;
}

}  // namespace

const QString& GDelimiter::sDelimAscii() {
    static const QString table = QString::fromLatin1(pDelimASCII);
    return table;
}

const QString& GDelimiter::sDelimAscii_Sentence() {
    static const QString table = QString::fromLatin1(pDelimASCII_Sentence);
    return table;
}

const QString& GDelimiter::sDelimChinese() {
    static const QString table = join_chinese();
    return table;
}

const QString& GDelimiter::sDelimAll() {
    static const QString table = sDelimAscii() + sDelimChinese();
    return table;
}

const QString& GDelimiter::sDelimAll_Sentence() {
    static const QString table = sDelimAscii_Sentence() + sDelimChinese();
    return table;
}

}  // namespace ze
