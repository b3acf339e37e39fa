#include "ze/tools/rnd.h"

#include "ze/tools/convert.h"

#include <QString>

#include <algorithm>
#include <cmath>
#include <random>

namespace ze::rnd {

namespace {

using Distribution = std::uniform_int_distribution<unsigned long long>;

// All state is made at first use: listeners that are static objects draw their keys before main.
std::mt19937_64& mt() {
    static std::mt19937_64 engine;
    return engine;
}

unsigned long long draw(unsigned long long low, unsigned long long high) {
    return Distribution(low, high)(mt());
}

std::uniform_real_distribution<double> real_range(double low, double high) {
    if (!std::isfinite(low)) {
        return std::uniform_real_distribution(0.0, 0.0);
    }
    const bool is_range = low < high && std::isfinite(high - low);
    return std::uniform_real_distribution(low, is_range ? high : low);
}

}  // namespace

void ini_seed() {
    constexpr unsigned long long SEED = 1000;
    mt().seed(SEED);
}

unsigned long long number(bool) {
    return mt()();
}

unsigned long long number_range(unsigned long long low, unsigned long long high, bool) {
    const auto [first, last] = std::minmax(low, high);
    return draw(first, last);
}

char letter() {
    return static_cast<char>(draw('A', 'Z'));
}

char letter_lowercase() {
    return static_cast<char>(draw('a', 'z'));
}

char digit() {
    return static_cast<char>(draw('0', '9'));
}

char alnum() {
    const unsigned long long n = draw(0, 35);
    return static_cast<char>(n < 26 ? 'A' + n : '1' + (n - 26));
}

int next_int(int limit) {
    static std::uniform_int_distribution<int> range(0, std::max(limit, 0));
    return range(mt());
}

double next_double(double low, double high) {
    static std::uniform_real_distribution<double> range = real_range(low, high);
    return range(mt());
}

std::string next_string(unsigned length, bool upper_case, unsigned words) {
    std::string text;
    for (unsigned word = 0; word < words; ++word) {
        if (word > 0) {
            text += ' ';
        }
        for (unsigned i = 0; i < length; ++i) {
            text += upper_case ? letter() : letter_lowercase();
        }
    }
    return text;
}

QString next_QString(unsigned length, bool upper_case) {
    return convert::to_string(next_string(length, upper_case, 1));
}

}  // namespace ze::rnd
