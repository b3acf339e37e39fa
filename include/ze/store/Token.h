// One piece of a command line as GArgv reads it: a word, a quoted text or the end. The general
// splitter with delimiters and a cursor is ze::GTokenizer; the two share nothing.
#pragma once

#include <QString>
#include <QStringView>

#include <string>
#include <vector>

namespace ze::store {

struct Token {
    enum Type : unsigned {
        WORD = 0,   ///< a run of characters that are not white space
        QUOTE = 1,  ///< the text between two double quotes, may be empty
        END = 2,    ///< empty; always the last token of a list
    };

    QStringView text;  ///< looks into the source, which must outlive the token
    Type type = END;

    /// Splits `source` at white space and double quotes; no character escapes another. The list
    /// ends with END. An unterminated quote logs an error and gives an empty list.
    [[nodiscard]] static std::vector<Token> token_from_source(const QString& source);

    /// "<<<text>>> WORD", for logs.
    [[nodiscard]] std::string to_string() const;
};

}  // namespace ze::store
