// The gallery as a program: it starts, shows each page in each theme, saves the pictures and ends.
#include "ze/qt/themes.h"

#include <QDir>
#include <QImage>
#include <QPalette>
#include <QProcess>
#include <QTemporaryDir>

#include <map>

#include <gtest/gtest.h>

namespace {

using namespace ze::qt;

constexpr int DRAWN = 10;  // colours of a picture with letters, lines and icons in it, at least

using Colors = std::map<QRgb, int>;  // with the number of pixels

Colors colors_of(const QImage& picture) {
    Colors colors;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ++colors[picture.pixel(x, y)];
        }
    }
    return colors;
}

/// Above the log, whose lines tell the time.
QImage page_of(const QImage& picture) {
    return picture.copy(0, 0, picture.width(), picture.height() / 2);
}

class Pictures : public testing::Test {
protected:
    /// Runs the gallery until it ends; the exit status.
    int run_gallery(const QString& pictures) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        // Libraries beneath Qt keep caches until the process ends.
        environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(GALLERY_PROGRAM), {QStringLiteral("--pictures"), pictures});
        EXPECT_TRUE(process.waitForFinished());
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    [[nodiscard]] QImage picture(const char* page, unsigned int theme) const {
        return QImage(folder.filePath(QStringLiteral("gallery_%1_%2_900x700.png")
                                          .arg(QLatin1String(page))
                                          .arg(themes::theme_to_string(theme))));
    }

    QTemporaryDir folder;
};

TEST_F(Pictures, show_each_page_in_the_colours_of_each_theme) {
    ASSERT_EQ(run_gallery(folder.path()), 0);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 6);
    for (const unsigned int theme : {themes::NORMAL, themes::DARK, themes::GREEN}) {
        const QImage widgets = page_of(picture("widgets", theme));
        const QImage layouts = page_of(picture("layouts", theme));
        EXPECT_NE(widgets, layouts) << theme;
        for (const QImage& page : {widgets, layouts}) {
            Colors colors = colors_of(page);
            const QRgb background = themes::get_palette(theme).color(QPalette::Window).rgb();
            EXPECT_GT(colors[background], page.width() * page.height() / 20) << theme;
            EXPECT_GT(colors.size(), std::size_t{DRAWN}) << theme;
        }
    }
}

TEST_F(Pictures, that_can_not_be_saved_end_the_gallery_with_a_failure) {
    EXPECT_EQ(run_gallery(folder.filePath(QStringLiteral("missing"))), 1);
}

}  // namespace
