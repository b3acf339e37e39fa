// Tables of characters at which texts are split. Made on first use; nobody changes them.
#pragma once

#include <QString>

#include <array>

namespace ze {

struct GDelimiter {
    static constexpr const char* pDelimASCII = " \t{,;:./}()[]@\\+-*/%^#!?<>|&~=\"'`";
    static constexpr const char* pDelimASCII_Sentence = ".!?";

    /// Each a UTF-8 string of one character; U+9AD8 among them is a letter.
    static constexpr std::array<const char*, 15> arDelimChinese = {
        "\u3002", "\uFF01", "\uFF0E", "\uFF0C", "\uFF1F", "\uFF1A", "\u2026", "\uFF08",
        "\uFF09", "\u9AD8", "\u201D", "\u300A", "\u300B", "\u201C", "\u3000"};

    [[nodiscard]] static const QString& sDelimAscii();
    [[nodiscard]] static const QString& sDelimAscii_Sentence();
    [[nodiscard]] static const QString& sDelimChinese();
    [[nodiscard]] static const QString& sDelimAll();  ///< ASCII, then Chinese
    [[nodiscard]] static const QString&
    sDelimAll_Sentence();  ///< ASCII ends of sentences, then Chinese
};

}  // namespace ze
