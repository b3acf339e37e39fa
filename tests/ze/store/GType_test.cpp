#include "ze/store/GType.h"

#include "support/LogCapture.h"

#include <QDataStream>
#include <QIODevice>
#include <QVariant>

#include <array>
#include <new>

#include <gtest/gtest.h>

namespace {

using ze::log::LogConfig;
using ze::store::GType;
using ze::store::gtype_traits;

struct Unregistered {
    int value = 0;
};

template <typename T>
GType gtype_of(const T& value) {
    return {gtype_traits<T>::id, ze::store::pod_to_bytes(value)};
}

QByteArray stream_bytes(const GType& value) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << value;
    return bytes;
}

TEST(GType, ids_are_fixed_and_a_type_without_traits_has_none) {
    EXPECT_EQ(gtype_traits<LogConfig>::id, 99u);
    EXPECT_EQ(gtype_traits<glm::mat4>::id, 500u);
    EXPECT_EQ(gtype_traits<Unregistered>::id, 0u);
}

TEST(GType, both_structures_are_registered_before_main) {
    EXPECT_EQ(ze::store::reg_LogConfig, 1);
    EXPECT_EQ(ze::store::reg_matrix4, 1);
    EXPECT_EQ(ze::store::create_registry().size(), 2u);
    EXPECT_EQ(ze::store::format_registry().size(), 2u);
}

TEST(GType, formatter_of_another_type_throws) {
    EXPECT_THROW((void)ze::store::format_registry().at(500)(std::any(1)), std::bad_any_cast);
}

TEST(GType, registering_again_changes_nothing) {
    EXPECT_EQ(ze::store::register_gtype<LogConfig>(), 1);
    EXPECT_EQ(ze::store::create_registry().size(), 2u);
}

TEST(GType, default_prints_id_and_size_and_logs_the_missing_formatter) {
    test::LogCapture log;

    EXPECT_EQ(GType().to_string().toStdString(), "GType{id:0, size:0}");
    EXPECT_EQ(log.lines_with_level(),
              std::vector<std::string>{"DEB GType::to_string - formatter id:0 not found"});
}

TEST(GType, unknown_id_prints_the_length_of_its_data) {
    test::LogCapture log;

    EXPECT_EQ((GType{7, "abc"}).to_string().toStdString(), "GType{id:7, size:3}");
    EXPECT_EQ(log.lines(), std::vector<std::string>{"GType::to_string - formatter id:7 not found"});
}

TEST(GType, log_config_prints_its_own_text) {
    LogConfig config;
    config.ini();

    EXPECT_EQ(gtype_of(config).to_string().toStdString(), config.to_string());
}

TEST(GType, log_config_is_20_bytes_and_a_matrix_64) {
    EXPECT_EQ(gtype_of(LogConfig()).data.size(), 20);
    EXPECT_EQ(gtype_of(glm::mat4(1.0f)).data.size(), 64);
}

TEST(GType, matrix_prints_its_name_whatever_the_bytes_are) {
    EXPECT_EQ(gtype_of(glm::mat4(1.0f)).to_string().toStdString(), "Matrix4");
    EXPECT_EQ((GType{500, QByteArray()}).to_string().toStdString(), "Matrix4");
    EXPECT_EQ((GType{500, QByteArray(100, '\xFF')}).to_string().toStdString(), "Matrix4");
}

TEST(GType, create_gives_the_structure_back) {
    const glm::mat4 matrix(2.5f);

    EXPECT_EQ(std::any_cast<glm::mat4>(gtype_of(matrix).create()), matrix);
}

TEST(GType, create_of_an_unknown_id_is_empty_and_silent) {
    test::LogCapture log(ze::log::TRACE);

    EXPECT_FALSE((GType{7, "abc"}).create().has_value());
    EXPECT_EQ(log.lines(), std::vector<std::string>{});
}

TEST(GType, create_with_another_id_reads_the_same_bytes_as_that_type) {
    GType value = gtype_of(glm::mat4(1.0f));
    value.id = 7;

    EXPECT_EQ(std::any_cast<glm::mat4>(value.create(500)), glm::mat4(1.0f));
}

TEST(GType, create_from_too_few_bytes_leaves_the_rest_at_its_default) {
    GType value{99, QByteArray::fromHex("0700000002000000")};

    const auto config = std::any_cast<LogConfig>(value.create());

    EXPECT_EQ(config.digits, 7u);
    EXPECT_EQ(config.logLevel, 2u);
    EXPECT_EQ(config.fontSize, LogConfig().fontSize);
}

TEST(GType, a_stored_byte_that_is_no_bool_reads_as_true) {
    GType value = gtype_of(LogConfig());
    value.data[16] = '\x7F';

    EXPECT_TRUE(std::any_cast<LogConfig>(value.create()).autoScrollHorz);
}

TEST(GType, equal_structures_are_stored_as_equal_bytes_despite_their_padding) {
    alignas(LogConfig) std::array<unsigned char, sizeof(LogConfig)> memory;
    memory.fill(0xAA);
    auto* const config = new (memory.data()) LogConfig();

    EXPECT_EQ(gtype_of(*config).data.toHex(' ').toStdString(),
              "06 00 00 00 03 00 00 00 00 00 00 00 0a 00 00 00 00 00 00 00");
}

TEST(GType, stream_form_is_the_id_and_the_counted_bytes) {
    EXPECT_EQ(stream_bytes({99, "abc"}).toHex(' ').toStdString(),
              "00 00 00 63 00 00 00 03 61 62 63");
}

TEST(GType, written_and_read_back_is_the_same) {
    const GType written = gtype_of(LogConfig());
    QDataStream stream(stream_bytes(written));
    GType read;

    stream >> read;

    EXPECT_EQ(read, written);
}

TEST(GType, short_stream_leaves_its_status_set) {
    QDataStream stream(QByteArray::fromHex("0000006300000003ab"));
    GType read;

    stream >> read;

    EXPECT_EQ(stream.status(), QDataStream::ReadPastEnd);
    EXPECT_EQ(read.id, 99u);
}

TEST(GType, variant_carries_the_registered_name) {
    EXPECT_STREQ(QVariant::fromValue(GType()).typeName(), "ze::store::GType");
}

TEST(GType, second_name_is_the_same_type_and_leaves_the_first_in_streams) {
    ze::store::register_second_type_name();

    EXPECT_EQ(QMetaType::fromName("zek::store::GType"), QMetaType::fromType<GType>());
    EXPECT_STREQ(QVariant::fromValue(GType()).typeName(), "ze::store::GType");
}

}  // namespace
