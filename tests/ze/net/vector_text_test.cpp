// The text of vectors on the wire is defined by what a standard stream writes and reads; it is
// made by other means, for speed. Here the two stand side by side.

#include "ze/net/PlayMessage.h"

#include "support/LogCapture.h"

#include <QJsonObject>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <locale>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

namespace {

using ze::net::PlayMessage;

const QString KEY = QStringLiteral("k");
constexpr glm::vec2 DEF{-7, 9};

std::string written(const glm::vec2& value) {
    QJsonObject object;
    PlayMessage message(object);
    message.set_vector2(KEY, value);
    return message.get_std_string(KEY);
}

std::string stream_written(const glm::vec2& value) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << value.x << ',' << value.y;
    return out.str();
}

glm::vec2 read(const std::string& text) {
    QJsonObject object;
    PlayMessage message(object);
    message.set_std_string(KEY, text);
    return message.get_vector2(KEY, DEF);
}

glm::vec2 stream_read(const std::string& text) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    glm::vec2 value;
    char separator = 0;
    in >> value.x >> separator >> value.y;
    return in && separator == ',' ? value : DEF;
}

bool same_bits(const glm::vec2& a, const glm::vec2& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST(vector_text, any_float_is_written_as_a_stream_writes_it_and_read_as_a_stream_reads_it) {
    std::mt19937 random(1);  // NOLINT: the same values in each run
    for (int i = 0; i < 100'000; ++i) {
        const glm::vec2 value(std::bit_cast<float>(static_cast<std::uint32_t>(random())),
                              std::bit_cast<float>(static_cast<std::uint32_t>(random())));
        const std::string text = written(value);
        ASSERT_EQ(text, stream_written(value));
        ASSERT_TRUE(same_bits(read(text), stream_read(text))) << text;
    }
}

TEST(vector_text, field_coordinates_are_written_and_read_as_by_a_stream) {
    std::mt19937 random(2);  // NOLINT: the same values in each run
    std::uniform_real_distribution<float> x(-400, 400);
    std::uniform_real_distribution<float> y(-200, 200);
    for (int i = 0; i < 100'000; ++i) {
        const glm::vec2 value(x(random), y(random));
        const std::string text = written(value);
        ASSERT_EQ(text, stream_written(value));
        ASSERT_TRUE(same_bits(read(text), stream_read(text))) << text;
    }
}

TEST(vector_text, the_ends_of_the_range_are_written_as_by_a_stream) {
    using Limits = std::numeric_limits<float>;
    const float values[] = {0.0F,
                            -0.0F,
                            Limits::max(),
                            Limits::lowest(),
                            Limits::min(),
                            Limits::denorm_min(),
                            Limits::infinity(),
                            -Limits::infinity(),
                            Limits::quiet_NaN(),
                            -Limits::quiet_NaN(),
                            999999.5F,
                            9999995.0F,
                            0.0001F,
                            0.00001F};
    for (const float a : values) {
        for (const float b : values) {
            EXPECT_EQ(written({a, b}), stream_written({a, b}));
        }
    }
}

TEST(vector_text, any_text_near_a_vector_is_read_as_by_a_stream) {
    test::LogCapture log;
    const std::string alphabet = "0123456789,,..--+eE xn";
    std::mt19937 random(3);  // NOLINT: the same values in each run
    std::uniform_int_distribution<std::size_t> letter(0, alphabet.size() - 1);
    std::uniform_int_distribution<std::size_t> place(1, 12);
    for (int i = 0; i < 200'000; ++i) {
        std::string text(place(random), ' ');
        for (char& c : text) {
            c = alphabet[letter(random)];
        }
        ASSERT_TRUE(same_bits(read(text), stream_read(text))) << "'" << text << "'";
    }
}

}  // namespace
