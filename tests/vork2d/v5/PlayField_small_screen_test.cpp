// The width of the field on a small device: this program runs on a screen of its own making.
#include "ze/qt/guitools/dim.h"

#include "vork2d/v5/FieldFixture.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

/// Names the platform and its screen; it has to stand before the application object does.
class SmallScreen {
public:
    SmallScreen() {
        QFile file(dir.filePath(QStringLiteral("screen.json")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(R"({"screens": [{"name": "small", "width": 400, "height": 700}]})");
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.fileName().toUtf8());
    }

private:
    QTemporaryDir dir;
};

const SmallScreen smallScreen;

class PlayFieldSmallScreen : public test::FieldTest {
protected:
    PlayFieldSmallScreen() { ze::qt::dim::reset_cache(); }
    ~PlayFieldSmallScreen() override { ze::qt::dim::reset_cache(); }
};

TEST_F(PlayFieldSmallScreen, an_upright_screen_holds_the_field_with_a_margin) {
    field.check_set_size();
    EXPECT_EQ(field.minimumWidth(), 396);
    EXPECT_EQ(field.maximumWidth(), 396);
}

TEST_F(PlayFieldSmallScreen, a_screen_on_its_side_sets_the_width_free_again) {
    field.check_set_size();
    ze::qt::dim::optSize = QSize(700, 400);
    field.check_set_size();
    EXPECT_EQ(field.minimumWidth(), 0);
    EXPECT_EQ(field.maximumWidth(), 0xFFFFFF);
}

}  // namespace
