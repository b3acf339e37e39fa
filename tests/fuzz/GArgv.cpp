// The input is a command line: arguments with a zero byte between them.

#include "ze/store/GArgv.h"

#include "ze/store/Token.h"

#include "support/check.h"

#include <QString>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using ze::store::GArgv;
using ze::store::Token;

GArgv argv_of(std::string bytes) {
    std::string program = "program";
    std::vector<char*> pointers = {program.data(), bytes.data()};
    for (std::size_t at = bytes.find('\0'); at != std::string::npos;
         at = bytes.find('\0', at + 1)) {
        pointers.push_back(bytes.data() + at + 1);
    }
    GArgv argv;
    argv.set_arguments(static_cast<int>(pointers.size()), pointers.data());
    return argv;
}

void check_tokens(const QString& source) {
    const std::vector<Token> tokens = Token::token_from_source(source);
    FUZZ_CHECK(tokens.empty() || tokens.back().type == Token::END);
    const QChar* behind = source.constData();
    for (const Token& token : tokens) {
        static_cast<void>(token.to_string());
        if (token.type != Token::END) {
            FUZZ_CHECK(token.text.begin() >= behind);
            behind = token.text.end();
        }
    }
    FUZZ_CHECK(behind <= source.constData() + source.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    check_tokens(QString::fromStdString(bytes));

    GArgv argv = argv_of(bytes);
    check_tokens(argv.source());
    argv.set_must_have_keys({QStringLiteral("user")});
    const bool ok = argv.parse();
    FUZZ_CHECK(!ok || argv.contains(QStringLiteral("user")));
    argv.show(0);
    return 0;
}
