#include "ze/store/GTokenizer.h"

#include "ze/log/log.h"
#include "ze/log/pp.h"

#include <algorithm>
#include <array>
#include <limits>

namespace ze {

namespace {

constexpr QChar QUOTE_MARK = u'"';
constexpr qsizetype NO_WORD = -1;
constexpr qsizetype USUAL_TOKEN = 8;  // with its delimiter; room for tokens is made once

// Answers for one character without a walk through the delimiters: nearly every character of a text
// is asked.
class DelimiterSet {
public:
    explicit DelimiterSet(QStringView delimiters) : all(delimiters) {
        for (const QChar c : delimiters) {
            (c.unicode() < TABLE_SIZE ? latin : wideLowByte)[c.unicode() % TABLE_SIZE] = true;
        }
    }

    [[nodiscard]] bool contains(QChar c) const {
        if (c.unicode() < TABLE_SIZE) {
            return latin[c.unicode()];
        }
        return wideLowByte[c.unicode() % TABLE_SIZE] && all.contains(c);
    }

private:
    static constexpr std::size_t TABLE_SIZE = 256;

    QStringView all;
    std::array<bool, TABLE_SIZE> latin = {};
    std::array<bool, TABLE_SIZE> wideLowByte = {};
};

bool is_blank(QChar c) {
    return c == u' ' || c == u'\t';
}

const char* kind_of(QStringView token) {
    if (GTokenizer::is_String(token)) {
        return "STRING";
    }
    if (GTokenizer::is_Number(token)) {
        return "NUMBER";
    }
    if (GTokenizer::is_RealNumber(token)) {
        return "REAL NUMBER";
    }
    if (GTokenizer::is_Bracket_open(token, QStringLiteral("{(["))) {
        return "BRACKET OPEN";
    }
    if (GTokenizer::is_Bracket_close(token, QStringLiteral("})]"))) {
        return "BRACKET CLOSE";
    }
    if (GTokenizer::is_Operator(token, QStringLiteral("+-*/^~"))) {
        return "OPERATOR";
    }
    return "OTHER";
}

}  // namespace

GTokenizer::GTokenizer(const QString& text, const QString& delimiters, bool keep_delimiters,
                       bool quotes) {
    buildToken(text, delimiters, keep_delimiters, quotes);
}

int GTokenizer::buildToken(const QString& text, const QString& delimiters, bool keep_delimiters,
                           bool quotes) {
    tokens.clear();
    tokens.reserve(static_cast<std::size_t>(text.size() / USUAL_TOKEN) + 1);
    const QStringView view = text;
    const DelimiterSet set(delimiters);
    qsizetype word = NO_WORD;
    const auto end_word = [this, view, &word](qsizetype end) {
        if (word != NO_WORD) {
            tokens.push_back(view.sliced(word, end - word));
            word = NO_WORD;
        }
    };
    for (qsizetype at = 0; at < view.size(); ++at) {
        if (quotes && view[at] == QUOTE_MARK) {
            const qsizetype close = view.indexOf(QUOTE_MARK, at + 1);
            if (close < 0) {
                word = word == NO_WORD ? NO_WORD : at;
                break;
            }
            tokens.push_back(view.sliced(at, close + 1 - at));
            word = NO_WORD;
            at = close;
        } else if (set.contains(view[at])) {
            end_word(at);
            if (keep_delimiters) {
                tokens.push_back(view.sliced(at, 1));
            }
        } else if (word == NO_WORD) {
            word = at;
        }
    }
    end_word(view.size());
    return static_cast<int>(tokens.size());
}

QStringView GTokenizer::token_at(qint64 index) const {
    const bool there = index >= 0 && index < static_cast<qint64>(tokens.size());
    return there ? tokens[static_cast<std::size_t>(index)] : QStringView();
}

QStringView GTokenizer::peek(unsigned offset) const {
    return token_at(qint64{position} + offset);
}

QStringView GTokenizer::next() const {
    const QStringView token = peek(0);
    if (position < std::numeric_limits<int>::max()) {
        ++position;
    }
    return token;
}

int GTokenizer::nextInt() const {
    const QStringView token = next();
    bool ok = false;
    const int value = token.toInt(&ok);
    if (!ok) {
        pp("XTokenizer::nextInt, token '$' is not a number", token);
        return 0;
    }
    return value;
}

double GTokenizer::nextDouble() const {
    const QStringView token = next();
    bool ok = false;
    const double value = token.toDouble(&ok);
    if (!ok) {
        pp("XTokenizer::nextDouble, token '$' is not a 'real' number", token);
        return 0.0;
    }
    return value;
}

void GTokenizer::putBack() const {
    position -= position >= 1 ? 1 : 0;
}

bool GTokenizer::is_Next_Token(const QString& text) const {
    return peek(0) == text;
}

bool GTokenizer::is_Number(unsigned offset) const {
    return is_Number(peek(offset));
}

bool GTokenizer::is_RealNumber(unsigned offset) const {
    return is_RealNumber(peek(offset));
}

bool GTokenizer::is_String(unsigned offset) const {
    return is_String(peek(offset));
}

bool GTokenizer::is_One_of_these_Chars(unsigned offset, const QString& characters) const {
    return is_One_of_these_Chars(peek(offset), characters);
}

bool GTokenizer::is_Operator(unsigned offset, const QString& characters) const {
    return is_Operator(peek(offset), characters);
}

bool GTokenizer::is_Bracket_open(unsigned offset, const QString& characters) const {
    return is_Bracket_open(peek(offset), characters);
}

bool GTokenizer::is_Bracket_close(unsigned offset, const QString& characters) const {
    return is_Bracket_close(peek(offset), characters);
}

bool GTokenizer::is_WhiteSpace(unsigned index) const {
    return is_WhiteSpace(token_at(index));
}

bool GTokenizer::is_String(QStringView token) {
    return token.startsWith(QUOTE_MARK) && token.endsWith(QUOTE_MARK);
}

bool GTokenizer::is_Number(QStringView token) {
    bool ok = false;
    static_cast<void>(token.toInt(&ok));
    return ok;
}

bool GTokenizer::is_RealNumber(QStringView token) {
    bool ok = false;
    static_cast<void>(token.toDouble(&ok));
    return ok;
}

bool GTokenizer::is_WhiteSpace(QStringView token) {
    return std::all_of(token.begin(), token.end(), is_blank);
}

QStringView GTokenizer::get_String(QStringView token) {
    if (!is_String(token)) {
        return token;
    }
    return token.size() == 1 ? QStringView() : token.sliced(1, token.size() - 2);
}

bool GTokenizer::is_One_of_these_Chars(QStringView token, const QString& characters) {
    return token.size() == 1 && characters.contains(token.front());
}

bool GTokenizer::is_Operator(QStringView token, const QString& characters) {
    return is_One_of_these_Chars(token, characters);
}

bool GTokenizer::is_Bracket_open(QStringView token, const QString& characters) {
    return is_One_of_these_Chars(token, characters);
}

bool GTokenizer::is_Bracket_close(QStringView token, const QString& characters) {
    return is_One_of_these_Chars(token, characters);
}

QString GTokenizer::removeWhitespace(const QString& text) {
    QString rest = text;
    rest.removeIf([](QChar c) { return is_blank(c) || c == u'\n' || c == u'\r'; });
    return rest;
}

void GTokenizer::remove_White_Space_Token() {
    position = 0;
    std::erase_if(tokens, [](QStringView token) { return is_WhiteSpace(token); });
}

void GTokenizer::fill(std::set<QString>& words) const {
    for (const QStringView token : tokens) {
        words.insert(token.toString());
    }
}

void GTokenizer::show(unsigned indent, bool with_kind) const {
    pp_format(log::DEBUG, indent, "Token:$", static_cast<unsigned>(tokens.size()));
    for (unsigned i = 0; const QStringView token : tokens) {
        if (with_kind) {
            pp_format(log::DEBUG, indent, "[$] = '$' -  $", i, token, kind_of(token));
        } else {
            pp_format(log::DEBUG, indent, "[$] = '$'", i, token);
        }
        ++i;
    }
}

}  // namespace ze
