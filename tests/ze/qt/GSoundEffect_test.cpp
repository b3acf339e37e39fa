#include "ze/qt/GSoundEffect.h"

#include "support/LogCapture.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <string>
#include <vector>

using ze::qt::GSoundEffect;

namespace {

using Texts = std::vector<std::string>;

// A tenth of a second of silence.
QByteArray silent_wav() {
    constexpr quint32 RATE = 44100;
    constexpr quint32 BYTES = RATE / 10 * 2;
    QByteArray wav;
    const auto word32 = [&wav](quint32 value) {
        const quint32 little = qToLittleEndian(value);
        wav.append(reinterpret_cast<const char*>(&little), sizeof little);
    };
    const auto word16 = [&wav](quint16 value) {
        const quint16 little = qToLittleEndian(value);
        wav.append(reinterpret_cast<const char*>(&little), sizeof little);
    };
    wav.append("RIFF");
    word32(36 + BYTES);
    wav.append("WAVEfmt ");
    word32(16);
    word16(1);
    word16(1);
    word32(RATE);
    word32(RATE * 2);
    word16(2);
    word16(16);
    wav.append("data");
    word32(BYTES);
    wav.append(QByteArray(BYTES, '\0'));
    return wav;
}

class GSoundEffectTest : public testing::Test {
protected:
    GSoundEffectTest() {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(silent_wav());
    }

    // Qt 6.4 calls into a sample that is destroyed while its thread still loads it.
    ~GSoundEffectTest() override {
        EXPECT_TRUE(QTest::qWaitFor([this] { return effect.status() != QSoundEffect::Loading; }));
    }

    QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("quiet.wav"));
    QString missing = dir.filePath(QStringLiteral("missing.wav"));
    test::LogCapture log;
    GSoundEffect effect;
};

}  // namespace

TEST_F(GSoundEffectTest, starts_uninitialised_and_without_a_path) {
    EXPECT_FALSE(effect.flagIni);
    EXPECT_EQ(effect.pathEndless, QString());
    EXPECT_EQ(effect.volume, 1.0);
}

TEST_F(GSoundEffectTest, a_missing_file_gives_one_warning_and_no_source) {
    struct Row {
        void (GSoundEffect::*play)(const QString&);
        Texts lines;
    };
    const std::string name = missing.toStdString();
    const std::vector<Row> rows{
        {&GSoundEffect::play_sound,
         {"DEB GSoundEffect::play_sound", "DEB GSoundEffect::play_sound, ini",
          "DEB GSoundEffect::ini", "WRN PanelThreaded::play_sound, does not exist '" + name + "'"}},
        {&GSoundEffect::play_endless,
         {"DEB GSoundEffect::play_endless", "DEB GSoundEffect::play_endless, ini*",
          "DEB GSoundEffect::ini", "WRN PanelThreaded::play_sound, does not exist '" + name + "'"}},
        {&GSoundEffect::play_sound_with_listener,
         {"DEB GSoundEffect::play_sound_with_listener",
          "DEB GSoundEffect::play_sound_with_listener, ini", "DEB GSoundEffect::ini",
          "WRN PanelThreaded::play_sound_with_listener, does not exist '" + name + "'"}},
    };
    for (const Row& row : rows) {
        log.clear();
        (effect.*row.play)(missing);
        EXPECT_EQ(log.lines_with_level(), row.lines);
        EXPECT_EQ(effect.source(), QUrl());
    }
}

TEST_F(GSoundEffectTest, play_sound_sets_the_source_and_initialises_each_time) {
    effect.play_sound(path);
    effect.stop();
    log.clear();
    effect.play_sound(path);
    EXPECT_EQ(effect.source(), QUrl(path));
    EXPECT_EQ(effect.QSoundEffect::volume(), 1.0F);
    const Texts expected{"GSoundEffect::play_sound", "GSoundEffect::play_sound, ini",
                         "GSoundEffect::ini"};
    EXPECT_EQ(log.lines(), expected);
}

TEST_F(GSoundEffectTest, a_new_sound_stops_the_one_that_plays) {
    effect.play_sound(path);
    log.clear();
    // The same one: for another Qt would stop the first by itself.
    effect.play_sound(path);
    EXPECT_EQ(log.lines(), (Texts{"GSoundEffect::play_sound", "GSoundEffect::play_sound, ini",
                                  "GSoundEffect::ini", "GSoundEffect::play_sound, STOP"}));
    EXPECT_TRUE(effect.isPlaying());
}

TEST_F(GSoundEffectTest, play_endless_begins_its_sound_anew) {
    effect.play_endless(path);
    log.clear();
    effect.play_endless(path);
    EXPECT_EQ(log.records().back().text, "GSoundEffect::play_endless, STOP");
    EXPECT_TRUE(effect.isPlaying());
}

TEST_F(GSoundEffectTest, play_sound_with_listener_stops_the_sound_that_plays) {
    effect.play_sound(path);
    EXPECT_TRUE(effect.isPlaying());
    effect.play_sound_with_listener(path);
    EXPECT_FALSE(effect.isPlaying());
}

TEST_F(GSoundEffectTest, play_endless_loops_quietly_and_loads_a_path_once) {
    effect.play_endless(path);
    EXPECT_EQ(effect.source(), QUrl(path));
    EXPECT_EQ(effect.pathEndless, path);
    EXPECT_FLOAT_EQ(effect.QSoundEffect::volume(), 0.1F);
    EXPECT_EQ(effect.loopCount(), static_cast<int>(QSoundEffect::Infinite));
    effect.stop();
    log.clear();
    effect.play_endless(path);
    EXPECT_EQ(log.lines_with_level(),
              (Texts{"DEB GSoundEffect::play_endless", "DEB GSoundEffect::play_endless, ini*",
                     "DEB GSoundEffect::ini",
                     "INF GSoundEffect::play_endless,  '" + path.toStdString() + "'",
                     "DEB GSoundEffect::play_endless, from cache"}));
}

TEST_F(GSoundEffectTest, play_sound_with_listener_loads_and_does_not_play) {
    effect.play_sound_with_listener(path);
    EXPECT_EQ(effect.source(), QUrl(path));
    EXPECT_FALSE(effect.isPlaying());
    EXPECT_EQ(log.records().back().text,
              "GSoundEffect::play_sound_with_listener,  '" + path.toStdString() + "'");
}

TEST_F(GSoundEffectTest, ini_tells_when_it_was_done_already) {
    effect.flagIni = true;
    effect.ini();
    EXPECT_EQ(log.lines(), Texts{"GSoundEffect::ini, already done"});
}
