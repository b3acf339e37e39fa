// Splits a text at a set of delimiter characters and reads the pieces with a cursor. A token past
// the end reads as an empty text. The command line has a parser of its own, ze::store::GArgv.
#pragma once

#include <QString>
#include <QStringView>

#include <set>
#include <vector>

namespace ze {

class GTokenizer {
public:
    /// Pieces of the text that was split, which must outlive the tokenizer.
    std::vector<QStringView> tokens;

    /// Index of the token that is read next.
    mutable int position = 0;

    /// Splits `text`, see buildToken.
    GTokenizer(const QString& text, const QString& delimiters, bool keep_delimiters, bool quotes);

    /// Splits `text` anew and returns the number of tokens; the cursor stays where it is. Runs of
    /// delimiters leave no empty tokens behind; with `keep_delimiters` each delimiter is a token of
    /// its own. With `quotes` the text from one `"` through the next is one token, and a word that
    /// runs into its opening quote is given up. A quote that nothing closes takes the rest of the
    /// text: lost, or one token if it began inside a word.
    int buildToken(const QString& text, const QString& delimiters, bool keep_delimiters,
                   bool quotes);

    /// Reads the next token as a 32-bit integer and moves on; 0 and a log line if it is none.
    int nextInt() const;

    /// Reads the next token as a real number and moves on; 0 and a log line if it is none.
    double nextDouble() const;

    /// Moves the cursor back by one token, not below 0.
    void putBack() const;

    [[nodiscard]] bool is_Next_Token(const QString& text) const;

    // About the token `offset` places behind the cursor.
    [[nodiscard]] bool is_Number(unsigned offset) const;
    [[nodiscard]] bool is_RealNumber(unsigned offset) const;
    [[nodiscard]] bool is_String(unsigned offset) const;
    [[nodiscard]] bool is_One_of_these_Chars(unsigned offset, const QString& characters) const;
    [[nodiscard]] bool is_Operator(unsigned offset, const QString& characters) const;
    [[nodiscard]] bool is_Bracket_open(unsigned offset, const QString& characters) const;
    [[nodiscard]] bool is_Bracket_close(unsigned offset, const QString& characters) const;

    /// About the token at `index`, counted from the first one, not from the cursor.
    [[nodiscard]] bool is_WhiteSpace(unsigned index) const;

    /// Begins and ends with `"`; a single `"` does both.
    [[nodiscard]] static bool is_String(QStringView token);
    /// A decimal integer of 32 bits.
    [[nodiscard]] static bool is_Number(QStringView token);
    [[nodiscard]] static bool is_RealNumber(QStringView token);
    /// Empty, or blanks and tabs only.
    [[nodiscard]] static bool is_WhiteSpace(QStringView token);
    /// The token without the quotes around it; any other token as it is.
    [[nodiscard]] static QStringView get_String(QStringView token);

    // One character that is in `characters`; four names for what the caller means by it.
    [[nodiscard]] static bool is_One_of_these_Chars(QStringView token, const QString& characters);
    [[nodiscard]] static bool is_Operator(QStringView token, const QString& characters);
    [[nodiscard]] static bool is_Bracket_open(QStringView token, const QString& characters);
    [[nodiscard]] static bool is_Bracket_close(QStringView token, const QString& characters);

    /// A copy without tabs, line feeds, carriage returns and blanks.
    [[nodiscard]] static QString removeWhitespace(const QString& text);

    /// Drops the tokens that are empty or white space and sets the cursor to the first one.
    void remove_White_Space_Token();

    /// Inserts every token into `words`.
    void fill(std::set<QString>& words) const;

    /// Logs the tokens, with what each is (a number, a bracket, ...) if `with_kind`.
    void show(unsigned indent, bool with_kind) const;

private:
    [[nodiscard]] QStringView token_at(qint64 index) const;
    [[nodiscard]] QStringView peek(unsigned offset) const;
    QStringView next() const;
};

}  // namespace ze
