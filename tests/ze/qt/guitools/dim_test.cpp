#include "ze/qt/guitools/dim.h"

#include "support/LogCapture.h"

#include <QGuiApplication>
#include <QScreen>

#include <string>
#include <vector>

namespace dim = ze::qt::dim;

namespace {

// Each test sets the kept size by hand and leaves none behind.
class Dim : public testing::Test {
protected:
    ~Dim() override { dim::optSize.reset(); }

    test::LogCapture log;
};

}  // namespace

TEST_F(Dim, each_width_has_its_class) {
    struct Row {
        int width;
        unsigned dimension;
        std::string word;
    };
    for (const Row& row :
         {Row{299, 1, "TINY"}, Row{300, 2, "SMALL"}, Row{598, 2, "SMALL"}, Row{599, 5, "XLARGE"},
          Row{600, 3, "MEDIUM"}, Row{898, 3, "MEDIUM"}, Row{899, 5, "XLARGE"}, Row{900, 4, "LARGE"},
          Row{1298, 4, "LARGE"}, Row{1299, 5, "XLARGE"}, Row{1920, 5, "XLARGE"}}) {
        dim::optSize = QSize(row.width, 400);
        EXPECT_EQ(dim::get_dimension(), row.dimension) << row.width;
        EXPECT_EQ(dim::dimension_as_string(), row.word) << row.width;
        const std::vector<bool> answers{dim::is_tiny(), dim::is_small(), dim::is_medium(),
                                        dim::is_large(), dim::is_xlarge()};
        std::vector<bool> expected(5, false);
        expected[row.dimension - 1] = true;
        EXPECT_EQ(answers, expected) << row.width;
        EXPECT_TRUE(dim::is_dimension(row.dimension)) << row.width;
    }
}

TEST_F(Dim, words_of_classes_that_no_screen_has) {
    EXPECT_EQ(dim::to_string(0), "uninitialized");
    EXPECT_EQ(dim::to_string(6), "UNKNOWN-6");
}

TEST_F(Dim, an_area_with_a_side_below_300_counts_as_300_by_300) {
    EXPECT_EQ(dim::usable_size(QSize(200, 900)), QSize(300, 300));
    EXPECT_EQ(dim::usable_size(QSize(900, 299)), QSize(300, 300));
    EXPECT_EQ(dim::usable_size(QSize(300, 300)), QSize(300, 300));
    EXPECT_EQ(log.lines_with_level(),
              (std::vector<std::string>{"DEB dim::get_size - really so small ? 200,900",
                                        "DEB dim::get_size - really so small ? 900,299"}));
}

TEST_F(Dim, a_narrow_area_is_horizontal_since_it_counts_as_a_square) {
    dim::optSize = dim::usable_size(QSize(200, 900));
    EXPECT_EQ(dim::get_orientation(), Qt::Horizontal);
}

TEST_F(Dim, without_a_screen_the_size_is_300_by_300) {
    EXPECT_EQ(dim::size_of(nullptr), QSize(300, 300));
    EXPECT_EQ(log.lines(), std::vector<std::string>{});
}

TEST_F(Dim, the_size_is_taken_from_the_screen_once) {
    const QSize available = QGuiApplication::primaryScreen()->availableGeometry().size();
    EXPECT_EQ(dim::get_size(), available);
    EXPECT_EQ(dim::optSize, available);
    dim::optSize = QSize(321, 654);
    EXPECT_EQ(dim::get_size(), QSize(321, 654));
}

TEST_F(Dim, reset_cache_forgets_the_size) {
    dim::optSize = QSize(321, 654);
    dim::reset_cache();
    EXPECT_EQ(dim::optSize, std::nullopt);
    EXPECT_EQ(log.lines(), (std::vector<std::string>{"reset_cache", "ok, no size any more"}));
}

TEST_F(Dim, orientation_is_vertical_when_the_height_exceeds_the_width) {
    struct Row {
        QSize size;
        bool flagVertical;
    };
    for (const Row& row : {Row{{400, 401}, true}, Row{{400, 400}, false}, Row{{401, 400}, false}}) {
        dim::optSize = row.size;
        EXPECT_EQ(dim::is_orient_vert(), row.flagVertical) << row.size.width();
        EXPECT_EQ(dim::is_orient_horz(), !row.flagVertical) << row.size.width();
    }
}

TEST_F(Dim, info_tells_all_in_one_line) {
    dim::optSize = QSize(1920, 1040);
    EXPECT_EQ(dim::get_info(), "HORIZONTAL, 1920x1040 => XLARGE");
    dim::optSize = QSize(320, 640);
    EXPECT_EQ(dim::get_info(), "VERTICAL, 320x640 => SMALL");
}
