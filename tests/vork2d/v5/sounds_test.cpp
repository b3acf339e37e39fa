// What the sound files hold, byte by byte.
#include "vork2d/v5/sounds.h"

#include "support/QtPrinters.h"

#include <QDataStream>
#include <QFile>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace sounds = vork2d::v5::sounds;

struct Format {
    quint16 coding = 0;  // 1 is plain samples
    quint16 channels = 0;
    quint32 rate = 0;
    quint16 bits = 0;

    bool operator==(const Format&) const = default;
};

constexpr Format STEREO{1, 2, 44100, 16};
constexpr Format STEREO_HALF{1, 2, 22050, 16};
constexpr Format MONO{1, 1, 44100, 16};

struct Row {
    QString path;
    Format format;
    const char* otherForm;  // beside the wav; nullptr for none
};

const Row ROWS[] = {
    {sounds::START, STEREO, "mp3"},          {sounds::WALL_HIT, STEREO, "mp3"},
    {sounds::PADDLE_HIT, STEREO, "mp3"},     {sounds::POINT_WON, STEREO, "mp3"},
    {sounds::POINT_LOST, STEREO, "mp3"},     {sounds::ENTER_ROOM, STEREO_HALF, "oga"},
    {sounds::LEFT_ROOM, STEREO_HALF, "oga"}, {sounds::CHAT, STEREO, "oga"},
    {sounds::QUIET, MONO, nullptr},
};

constexpr int PEAK_MAX = 23197;        // 3 dB below full scale
constexpr double TAIL_SECONDS = 0.25;  // Qt 6.4 drops about the last 0.15 s of what it plays
constexpr qint64 BYTES_MAX = 1'000'000;

struct Wav {
    Format format;
    std::vector<qint16> samples;  // the channels in turn
};

Wav read_wav(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    QDataStream in(&file);
    in.setByteOrder(QDataStream::LittleEndian);
    Wav wav;
    in.skipRawData(20);  // "RIFF", a size, "WAVE", "fmt ", a size
    in >> wav.format.coding >> wav.format.channels >> wav.format.rate;
    in.skipRawData(6);  // bytes of a second and of a frame
    in >> wav.format.bits;
    char chunk[4] = {};
    in.readRawData(chunk, sizeof chunk);
    EXPECT_EQ(std::string(chunk, sizeof chunk), "data") << path.toStdString();
    quint32 bytes = 0;
    in >> bytes;
    wav.samples.resize(bytes / sizeof(qint16));
    for (qint16& sample : wav.samples) {
        in >> sample;
    }
    EXPECT_EQ(in.status(), QDataStream::Ok) << path.toStdString();
    EXPECT_TRUE(file.atEnd()) << path.toStdString();
    return wav;
}

bool is_silent(qint16 sample) {
    return sample == 0;
}

TEST(Sounds, each_is_16_bit_samples_in_its_rate_and_channels) {
    for (const Row& row : ROWS) {
        EXPECT_EQ(read_wav(row.path).format, row.format) << row.path.toStdString();
    }
}

TEST(Sounds, each_is_heard_and_none_is_louder_than_3_dB_below_full_scale) {
    for (const Row& row : ROWS) {
        int peak = 0;
        for (const qint16 sample : read_wav(row.path).samples) {
            peak = std::max(peak, std::abs(int{sample}));
        }
        EXPECT_LE(peak, PEAK_MAX) << row.path.toStdString();
        EXPECT_EQ(peak > 0, row.path != sounds::QUIET) << row.path.toStdString();
    }
}

TEST(Sounds, each_ends_in_the_silence_that_qt_cuts_off) {
    for (const Row& row : ROWS) {
        const Wav wav = read_wav(row.path);
        const auto tail =
            static_cast<std::ptrdiff_t>(TAIL_SECONDS * row.format.rate) * row.format.channels;
        ASSERT_GT(std::ssize(wav.samples), tail) << row.path.toStdString();
        EXPECT_TRUE(std::all_of(wav.samples.end() - tail, wav.samples.end(), is_silent))
            << row.path.toStdString();
    }
}

TEST(Sounds, the_quiet_one_lasts_one_and_four_tenths_of_a_second) {
    EXPECT_EQ(read_wav(sounds::QUIET).samples.size(), 61740U);
}

TEST(Sounds, together_they_are_small) {
    qint64 bytes = 0;
    for (const Row& row : ROWS) {
        bytes += QFile(row.path).size();
    }
    EXPECT_LT(bytes, BYTES_MAX);
}

TEST(Sounds, each_but_the_quiet_one_lies_beside_in_a_second_form) {
    for (const Row& row : ROWS) {
        for (const char* form : {"mp3", "oga"}) {
            const QString path = row.path.chopped(3) + QLatin1String(form);
            EXPECT_EQ(QFile::exists(path), QLatin1String(form) == QLatin1String(row.otherForm))
                << path.toStdString();
        }
    }
}

}  // namespace
