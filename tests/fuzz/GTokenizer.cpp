// The input is a text, with the delimiters and the two flags in its last bytes.

#include "ze/store/GTokenizer.h"

#include "support/check.h"

#include <QString>

#include <cstdint>
#include <set>

#include <fuzzer/FuzzedDataProvider.h>

using ze::GTokenizer;

namespace {

void check_order(const GTokenizer& tokenizer, const QString& text) {
    const QChar* behind = text.constData();
    for (const QStringView token : tokenizer.tokens) {
        FUZZ_CHECK(!token.isEmpty());
        FUZZ_CHECK(token.begin() >= behind);
        behind = token.end();
    }
    FUZZ_CHECK(behind <= text.constData() + text.size());
}

void read_with_cursor(const GTokenizer& tokenizer) {
    for (std::size_t i = 0; i <= tokenizer.tokens.size(); ++i) {
        static_cast<void>(tokenizer.nextInt());
        tokenizer.putBack();
        static_cast<void>(tokenizer.nextDouble());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const bool keepDelimiters = input.ConsumeBool();
    const bool quotes = input.ConsumeBool();
    const QString delimiters = QString::fromStdString(input.ConsumeRandomLengthString(16));
    const QString text = QString::fromStdString(input.ConsumeRemainingBytesAsString());

    GTokenizer tokenizer(text, delimiters, keepDelimiters, quotes);
    check_order(tokenizer, text);
    read_with_cursor(tokenizer);
    tokenizer.show(0, true);
    tokenizer.remove_White_Space_Token();
    check_order(tokenizer, text);
    std::set<QString> words;
    tokenizer.fill(words);
    return 0;
}
