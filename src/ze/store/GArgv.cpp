#include "ze/store/GArgv.h"

#include "ze/log/log.h"
#include "ze/log/pp.h"
#include "ze/store/Token.h"
#include "ze/tools/convert.h"

#include <QStringList>

namespace ze::store {

namespace {

QString quote_argument(const char* argument) {
    QString text = QString::fromUtf8(argument);
    text.replace(u'"', QStringLiteral("\\\""));
    if (text.contains(u' ') || text.contains(u'\t')) {
        text = u'"' + text + u'"';
    }
    return text;
}

bool is_key(const Token& token) {
    return token.text.startsWith(u'-');
}

QString key_name(QStringView word) {
    while (word.startsWith(u'-')) {
        word = word.sliced(1);
    }
    return word.toString();
}

}  // namespace

void GArgv::set_arguments(int argc, char** argv) {
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(quote_argument(argv[i]));
    }
    source_ = arguments.join(u' ');
}

bool GArgv::parse() {
    return read_pairs() && has_must_have_keys();
}

bool GArgv::read_pairs() {
    // The tokens look into source_, which nothing below changes.
    const std::vector<Token> tokens = Token::token_from_source(source_);
    for (std::size_t at = 0; at < tokens.size() && tokens[at].type != Token::END; ++at) {
        const Token& token = tokens[at];
        if (token.type == Token::QUOTE) {
            pp_error("GArgv::parse, unexpected token type");
            return false;
        }
        if (!is_key(token)) {
            pp_error("GArgv::parse, expected key, got '$'", token.text);
            return false;
        }
        const QString key = key_name(token.text);
        if (key.isEmpty()) {
            pp_error("GArgv::parse, empty key");
            return false;
        }
        // END closes every list, so that a key always has a token behind it.
        const Token& next = tokens[at + 1];
        if (next.type != Token::END && !is_key(next)) {
            set(key, next.text.toString());
            ++at;
        } else {
            set_flag(key, true);
        }
    }
    return true;
}

bool GArgv::has_must_have_keys() const {
    for (const QString& key : must_have_keys_) {
        if (!contains(key)) {
            pp_error("'$' missing", key);
            return false;
        }
    }
    return true;
}

void GArgv::show(unsigned indent) const {
    pp_format(log::DEBUG, indent, "GArgv, arguments:$", static_cast<unsigned>(size()));
    for (const auto& [key, value] : attributes()) {
        pp_format(log::DEBUG, indent, "$='$'", key, convert::to_qstring_basic_info(value));
    }
}

}  // namespace ze::store
