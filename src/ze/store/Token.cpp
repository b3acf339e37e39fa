#include "ze/store/Token.h"

#include "ze/log/pp.h"
#include "ze/tools/format.h"

#include <array>

namespace ze::store {

namespace {

constexpr QChar QUOTE_MARK = u'"';
constexpr qsizetype USUAL_WORD = 8;  // with the blank behind it; room for tokens is made once

qsizetype find_word_end(QStringView source, qsizetype from) {
    while (from < source.size() && !source[from].isSpace()) {
        ++from;
    }
    return from;
}

}  // namespace

std::vector<Token> Token::token_from_source(const QString& source) {
    // QChar::isSpace holds for the code units 9 to 13, 32, 133, 160 and for Unicode's separators.
    const QStringView view = source;
    std::vector<Token> tokens;
    tokens.reserve(static_cast<std::size_t>(source.size() / USUAL_WORD) + 1);
    for (qsizetype at = 0; at < view.size(); ++at) {
        if (view[at].isSpace()) {
            continue;
        }
        const bool quoted = view[at] == QUOTE_MARK;
        const qsizetype begin = quoted ? at + 1 : at;
        const qsizetype end = quoted ? view.indexOf(QUOTE_MARK, begin) : find_word_end(view, begin);
        if (end < 0) {
            pp_error("GArgv::parse, unterminated quote in argument string");
            return {};
        }
        tokens.push_back({view.sliced(begin, end - begin), quoted ? QUOTE : WORD});
        at = end;
    }
    tokens.push_back({{}, END});
    return tokens;
}

std::string Token::to_string() const {
    static constexpr std::array WORDS = {"WORD", "QUOTE", "END"};
    return str::xprintF(0, "<<<$>>> $", text, WORDS[type]);
}

}  // namespace ze::store
