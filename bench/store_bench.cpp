// The tokenizers beside a bare scan that only counts the words of the same text, and how the cost
// of a node's text grows with the number of its values.

#include "ze/store/GNode.h"
#include "ze/store/GTokenizer.h"
#include "ze/store/Token.h"

#include <QString>

#include <benchmark/benchmark.h>

namespace {

using ze::GTokenizer;
using ze::store::GNode;
using ze::store::Token;

constexpr qsizetype textSize = 1'000'000;

// Words of the length that a command line and a list of names have.
const QString& text() {
    static const QString words =
        QStringLiteral("--user Katherine --pass sesame-open --host 192.168.10.20 ")
            .repeated(textSize / 57);
    return words;
}

template <typename IsSeparator>
int count_words(QStringView view, const IsSeparator& is_separator) {
    int words = 0;
    bool inWord = false;
    for (const QChar c : view) {
        const bool separator = is_separator(c);
        words += !separator && !inWord ? 1 : 0;
        inWord = !separator;
    }
    return words;
}

void token_from_source(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(Token::token_from_source(text()));
    }
    state.SetBytesProcessed(state.iterations() * text().size());
}

void scan_for_white_space(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(count_words(text(), [](QChar c) { return c.isSpace(); }));
    }
    state.SetBytesProcessed(state.iterations() * text().size());
}

void split_at_delimiters(benchmark::State& state) {
    const QString delimiters = QStringLiteral(", ");
    for (auto _ : state) {
        benchmark::DoNotOptimize(GTokenizer(text(), delimiters, false, true));
    }
    state.SetBytesProcessed(state.iterations() * text().size());
}

void scan_for_delimiters(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            count_words(text(), [](QChar c) { return c == u',' || c == u' '; }));
    }
    state.SetBytesProcessed(state.iterations() * text().size());
}

BENCHMARK(token_from_source)->Name("command_line_tokens/ours");
BENCHMARK(scan_for_white_space)->Name("command_line_tokens/peer");
BENCHMARK(split_at_delimiters)->Name("tokenizer_split/ours");
BENCHMARK(scan_for_delimiters)->Name("tokenizer_split/peer");

constexpr int fewValues = 100;
constexpr int manyValues = 10'000;

GNode node_of(int values) {
    GNode node;
    for (int i = 0; i < values; ++i) {
        node.set(QStringLiteral("key%1").arg(i), i);
    }
    return node;
}

// Values in `texts` texts of equal size.
void node_to_text(benchmark::State& state, int values, int texts) {
    const GNode node = node_of(values / texts);
    for (auto _ : state) {
        for (int i = 0; i < texts; ++i) {
            benchmark::DoNotOptimize(GNode::to_qstring(node));
        }
    }
}

void node_from_text(benchmark::State& state, int values, int texts) {
    const QString stored = GNode::to_qstring(node_of(values / texts));
    for (auto _ : state) {
        for (int i = 0; i < texts; ++i) {
            benchmark::DoNotOptimize(GNode::from_qstring(stored));
        }
    }
}

BENCHMARK_CAPTURE(node_to_text, 1, 1, 1);
BENCHMARK_CAPTURE(node_to_text, 100, fewValues, 1);
BENCHMARK_CAPTURE(node_to_text, 10000, manyValues, 1);
BENCHMARK_CAPTURE(node_from_text, 1, 1, 1);
BENCHMARK_CAPTURE(node_from_text, 100, fewValues, 1);
BENCHMARK_CAPTURE(node_from_text, 10000, manyValues, 1);

// Were the cost linear to the last, both would take the same time.
constexpr int manyTexts = manyValues / fewValues;
BENCHMARK_CAPTURE(node_to_text, one, manyValues, 1)->Name("node_to_text_growth/ours");
BENCHMARK_CAPTURE(node_to_text, many, manyValues, manyTexts)->Name("node_to_text_growth/peer");
BENCHMARK_CAPTURE(node_from_text, one, manyValues, 1)->Name("node_from_text_growth/ours");
BENCHMARK_CAPTURE(node_from_text, many, manyValues, manyTexts)->Name("node_from_text_growth/peer");

}  // namespace
