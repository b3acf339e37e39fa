// xprintF beside fmt::format: two integers, two strings, four QString, five floats.

#include "ze/tools/format.h"

#include <QString>

#include <string>

#include <benchmark/benchmark.h>
#include <fmt/format.h>

namespace {

struct Values {
    int number = 42;
    int large = 1234567;
    std::string word = "paddle";
    std::string sentence = "the ball left the field";
    QString user = QStringLiteral("player");
    QString group = QStringLiteral("group of four");
    QString host = QStringLiteral("play.vork2d.example");
    QString umlaut = QStringLiteral("Größe über alles");
    float x = 1.5F;
    float y = -399.25F;
    float speed = 160.0F;
    float angle = 0.785398F;
    float small = 0.001F;
};

void xprintF(benchmark::State& state) {
    const Values v;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            ze::str::xprintF(0, "$ $, '$' '$', user:$ group:$ host:$ $, ($, $) speed:$ angle:$ $",
                             v.number, v.large, v.word, v.sentence, v.user, v.group, v.host,
                             v.umlaut, v.x, v.y, v.speed, v.angle, v.small));
    }
}

void fmt_format(benchmark::State& state) {
    const Values v;
    for (auto _ : state) {
        benchmark::DoNotOptimize(fmt::format(
            "{} {}, '{}' '{}', user:{} group:{} host:{} {}, ({:.2f}, {:.2f}) speed:{:.2f} "
            "angle:{:.2f} {:.2f}",
            v.number, v.large, v.word, v.sentence, v.user.toStdString(), v.group.toStdString(),
            v.host.toStdString(), v.umlaut.toStdString(), v.x, v.y, v.speed, v.angle, v.small));
    }
}

BENCHMARK(xprintF)->Name("xprintF_mixed/ours");
BENCHMARK(fmt_format)->Name("xprintF_mixed/peer");

}  // namespace
