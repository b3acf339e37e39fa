#include "ze/qt/GCanvas.h"

#include "ze/qt/GPC.h"
#include "ze/tools/format.h"

#include "support/LogCapture.h"

#include <QFontMetricsF>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QTransform>

#include <limits>
#include <string>
#include <vector>

using ze::math::Rect;
using ze::math::Size;
using ze::math::ViewPort;
using ze::math::QUADRANT::to_string;
using ze::qt::GCanvas;
using ze::qt::GPC;
namespace coord_system = ze::qt::coord_system;
namespace QUADRANT = ze::math::QUADRANT;

namespace {

using Texts = std::vector<std::string>;
constexpr auto UNKNOWN = static_cast<coord_system::Type>(7);

// Counts its paints and fills far more than its view.
class Canvas : public GCanvas {
public:
    Canvas() : GCanvas(nullptr) { setAttribute(Qt::WA_DontShowOnScreen); }

    std::vector<Rect> views;
    QTransform transform;
    bool flagClipped = false;

    QImage paint() {
        QImage image(size(), QImage::Format_RGB32);
        image.fill(Qt::blue);
        render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
        return image;
    }

protected:
    void draw(GPC& gpc, const Rect& rView) override {
        views.push_back(rView);
        transform = gpc.get_painter().transform();
        flagClipped = gpc.get_painter().hasClipping();
        gpc.fill_rect(-1000.0F, -1000.0F, 2000.0F, 2000.0F, Qt::red);
    }
};

class GCanvasTest : public testing::Test {
protected:
    GCanvasTest() {
        log.ignore("Listener::~Listener");
        log.ignore("GCanvas::set_view_size, 10.00x10.00");
    }

    void set_system(coord_system::Type type) {
        canvas.set_coord_system(coord_system::CARTESIAN);
        canvas.set_view_size(10.0F, 10.0F);
        canvas.set_coord_system(type);
    }

    test::LogCapture log;
    Canvas canvas;
};

struct Conversion {
    coord_system::Type type;
    glm::vec2 pixel;
    glm::vec2 logical;
};

// A widget of 200 by 100 pixels and a view of 10 by 10: s is 10 in CARTESIAN and 50 in NDC.
const std::vector<Conversion> CONVERSIONS{
    {coord_system::SCREEN, {100, 50}, {100, 50}},
    {coord_system::SCREEN, {-3, 400}, {-3, 400}},
    {coord_system::CARTESIAN, {100, 50}, {0, 0}},
    {coord_system::CARTESIAN, {150, 25}, {5, 2.5}},
    {coord_system::CARTESIAN, {0, 100}, {-10, -5}},
    {coord_system::NDC, {100, 50}, {0, 0}},
    {coord_system::NDC, {150, 0}, {1, 1}},
    {coord_system::NDC, {0, 100}, {-2, -1}},
    {coord_system::UV, {0, 0}, {0, 0}},
    {coord_system::UV, {200, 100}, {1, 1}},
    {coord_system::UV, {50, 75}, {0.25, 0.75}},
};

}  // namespace

TEST_F(GCanvasTest, starts_on_the_screen_with_a_view_of_one_by_one_and_the_clip_on) {
    EXPECT_EQ(canvas.get_coord_system(), coord_system::SCREEN);
    EXPECT_EQ(canvas.get_view_size(), Size(1.0F, 1.0F));
    EXPECT_TRUE(canvas.is_clip_enabled());
}

TEST_F(GCanvasTest, each_system_answers_to_its_own_question_only) {
    const std::vector<coord_system::Type> types{coord_system::SCREEN, coord_system::CARTESIAN,
                                                coord_system::NDC, coord_system::UV};
    for (std::size_t i = 0; i < types.size(); ++i) {
        canvas.set_coord_system(types[i]);
        std::vector<bool> expected(types.size(), false);
        expected[i] = true;
        const std::vector<bool> answers{canvas.is_coord_SCREEN(), canvas.is_coord_CARTESIAN(),
                                        canvas.is_coord_NDC(), canvas.is_coord_UV()};
        EXPECT_EQ(answers, expected) << i;
    }
}

TEST_F(GCanvasTest, view_size_outside_of_cartesian_is_an_error_and_changes_nothing) {
    log.expect_error(
        "GCanvas::set_view_size, w:800.00, h:600.00 only valid for CARTESIAN, current "
        "system:'SCREEN'");
    canvas.set_view_size(800.0F, 600.0F);
    canvas.set_coord_system(coord_system::CARTESIAN);
    EXPECT_EQ(canvas.get_view_size(), Size(1.0F, 1.0F));
}

TEST_F(GCanvasTest, view_size_without_an_area_is_an_error_and_changes_nothing) {
    canvas.set_coord_system(coord_system::CARTESIAN);
    log.expect_error("GCanvas::set_view_size, invalid size, w:0.00, h:10.00");
    log.expect_error("GCanvas::set_view_size, invalid size, w:10.00, h:-1.00");
    canvas.set_view_size(0.0F, 10.0F);
    canvas.set_view_size(10.0F, -1.0F);
    EXPECT_EQ(canvas.get_view_size(), Size(1.0F, 1.0F));
}

TEST_F(GCanvasTest, view_size_is_stored_and_logged) {
    canvas.set_coord_system(coord_system::CARTESIAN);
    canvas.set_view_size(800.0F, 400.0F);
    EXPECT_EQ(canvas.get_view_size(), Size(800.0F, 400.0F));
    EXPECT_EQ(log.lines_with_level(), Texts{"INF GCanvas::set_view_size, 800.00x400.00"});
}

TEST_F(GCanvasTest, only_a_real_change_schedules_a_repaint) {
    canvas.resize(200, 100);
    canvas.show();
    QCoreApplication::processEvents();
    const auto repaints_after = [this](const std::function<void()>& change) {
        canvas.views.clear();
        change();
        QCoreApplication::processEvents();
        return canvas.views.size();
    };
    EXPECT_EQ(repaints_after([this] { canvas.set_coord_system(coord_system::SCREEN); }), 0U);
    EXPECT_EQ(repaints_after([this] { canvas.set_coord_system(coord_system::CARTESIAN); }), 1U);
    EXPECT_EQ(repaints_after([this] { canvas.set_view_size(10.0F, 10.0F); }), 1U);
    EXPECT_EQ(repaints_after([this] { canvas.set_clip_enabled(false); }), 0U);
    log.expect_error("GCanvas::set_view_size, invalid size, w:0.00, h:10.00");
    EXPECT_EQ(repaints_after([this] { canvas.set_view_size(0.0F, 10.0F); }), 0U);
    log.expect_error("GCanvas::set_view_size, invalid size, w:10.00, h:-1.00");
    EXPECT_EQ(repaints_after([this] { canvas.set_view_size(10.0F, -1.0F); }), 0U);
}

TEST_F(GCanvasTest, pixels_convert_to_each_system) {
    canvas.resize(200, 100);
    for (const Conversion& row : CONVERSIONS) {
        set_system(row.type);
        EXPECT_EQ(canvas.convert_to_coord_system(row.pixel), row.logical)
            << coord_system::to_string(row.type) << " " << row.pixel.x;
    }
}

TEST_F(GCanvasTest, each_system_converts_back_to_pixels) {
    canvas.resize(200, 100);
    for (const Conversion& row : CONVERSIONS) {
        set_system(row.type);
        EXPECT_EQ(canvas.convert_from_coord_system(row.logical), row.pixel)
            << coord_system::to_string(row.type) << " " << row.logical.x;
    }
}

TEST_F(GCanvasTest, the_painters_transform_agrees_with_the_conversion) {
    canvas.resize(200, 100);
    QImage image(200, 100, QImage::Format_RGB32);
    for (const Conversion& row : CONVERSIONS) {
        set_system(row.type);
        QPainter painter(&image);
        painter.translate(33, 44);
        GPC gpc(painter);
        canvas.setup_transform(gpc, ViewPort(200.0F, 100.0F));
        const QPointF pixel = painter.transform().map(QPointF(row.logical.x, row.logical.y));
        EXPECT_EQ(pixel, QPointF(row.pixel.x, row.pixel.y)) << coord_system::to_string(row.type);
    }
}

TEST_F(GCanvasTest, a_widget_without_an_area_converts_to_zero_except_on_the_screen) {
    canvas.resize(0, 0);
    for (const auto type : {coord_system::CARTESIAN, coord_system::NDC, coord_system::UV}) {
        set_system(type);
        EXPECT_EQ(canvas.convert_to_coord_system({3, 4}), glm::vec2(0, 0)) << type;
        EXPECT_EQ(canvas.convert_from_coord_system({3, 4}), glm::vec2(0, 0)) << type;
    }
    set_system(coord_system::SCREEN);
    EXPECT_EQ(canvas.convert_to_coord_system({3, 4}), glm::vec2(3, 4));
    EXPECT_EQ(canvas.convert_from_coord_system({3, 4}), glm::vec2(3, 4));
}

TEST_F(GCanvasTest, an_unknown_system_is_reported_by_each_operation) {
    canvas.resize(200, 100);
    canvas.set_coord_system(UNKNOWN);
    for (const char* const operation : {"convert_to_coord_system", "convert_from_coord_system",
                                        "get_view_rect", "setup_transform"}) {
        log.expect_error(ze::str::xprintF(0, "GCanvas::$, unknown coordSystem:7", operation));
    }
    QImage image(200, 100, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.scale(2, 2);
    GPC gpc(painter);
    EXPECT_EQ(canvas.convert_to_coord_system({3, 4}), glm::vec2(0, 0));
    EXPECT_EQ(canvas.convert_from_coord_system({3, 4}), glm::vec2(0, 0));
    EXPECT_EQ(canvas.get_view_rect(ViewPort(200.0F, 100.0F)).to_string(),
              Rect(0, 0, 200, 100).to_string());
    canvas.setup_transform(gpc, ViewPort(200.0F, 100.0F));
    EXPECT_TRUE(painter.transform().isIdentity());
    EXPECT_EQ(canvas.line_height_logical(gpc), gpc.line_height());
}

TEST_F(GCanvasTest, a_mouse_position_is_rounded_to_pixels) {
    canvas.resize(200, 100);
    set_system(coord_system::CARTESIAN);
    const QMouseEvent ev(QEvent::MouseMove, QPointF(149.6, 25.4), QPointF(149.6, 25.4),
                         Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    EXPECT_EQ(canvas.pos_from_mouse_event(&ev), glm::vec2(5, 2.5));
}

TEST_F(GCanvasTest, each_system_has_its_view) {
    struct Row {
        coord_system::Type type;
        Rect view;
    };
    for (const Row& row :
         {Row{coord_system::SCREEN, {0, 0, 200, 100}},
          Row{coord_system::CARTESIAN, {-5, -5, 10, 10}}, Row{coord_system::NDC, {-1, -1, 2, 2}},
          Row{coord_system::UV, {0, 0, 1, 1}}}) {
        set_system(row.type);
        EXPECT_EQ(canvas.get_view_rect(ViewPort(200.0F, 100.0F)).to_string(), row.view.to_string())
            << row.type;
    }
}

TEST_F(GCanvasTest, a_point_lies_in_a_quadrant_or_on_an_axis) {
    struct Row {
        glm::vec2 point;
        QUADRANT::Type expected;
    };
    for (const Row& row :
         {Row{{0.00001F, 0.00001F}, QUADRANT::ORIGIN}, Row{{1, 0}, QUADRANT::ON_X_AXIS},
          Row{{-1, 0.00001F}, QUADRANT::ON_X_AXIS}, Row{{0, 1}, QUADRANT::ON_Y_AXIS},
          Row{{1, 0.5F}, QUADRANT::TOP_RIGHT}, Row{{1, -0.5F}, QUADRANT::BOTTOM_RIGHT},
          Row{{-1, 0.5F}, QUADRANT::TOP_LEFT}, Row{{-1, -0.5F}, QUADRANT::BOTTOM_LEFT}}) {
        EXPECT_EQ(to_string(canvas.quadrant_from_point(row.point)), to_string(row.expected))
            << row.point.x << ", " << row.point.y;
    }
}

TEST_F(GCanvasTest, a_point_that_is_no_number_is_an_error_and_the_origin) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    log.expect_error("GCanvas::quadrant_from_point, invalid point:nan, 1.00");
    log.expect_error("GCanvas::quadrant_from_point, invalid point:1.00, nan");
    EXPECT_EQ(canvas.quadrant_from_point({nan, 1}), QUADRANT::ORIGIN);
    EXPECT_EQ(canvas.quadrant_from_point({1, nan}), QUADRANT::ORIGIN);
}

TEST_F(GCanvasTest, with_the_clip_only_the_view_is_painted) {
    canvas.resize(200, 100);
    set_system(coord_system::CARTESIAN);
    const QImage image = canvas.paint();
    EXPECT_TRUE(canvas.flagClipped);
    EXPECT_NE(image.pixelColor(49, 50), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(50, 50), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(149, 50), QColor(Qt::red));
    EXPECT_NE(image.pixelColor(150, 50), QColor(Qt::red));
}

TEST_F(GCanvasTest, without_the_clip_the_whole_widget_is_painted) {
    canvas.resize(200, 100);
    set_system(coord_system::CARTESIAN);
    canvas.set_clip_enabled(false);
    const QImage image = canvas.paint();
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(199, 99), QColor(Qt::red));
}

TEST_F(GCanvasTest, draw_gets_the_view_and_the_transform_of_the_system) {
    canvas.resize(200, 100);
    set_system(coord_system::CARTESIAN);
    canvas.paint();
    ASSERT_EQ(canvas.views.size(), 1U);
    EXPECT_EQ(canvas.views[0].to_string(), Rect(-5, -5, 10, 10).to_string());
    EXPECT_EQ(canvas.transform, QTransform(10, 0, 0, -10, 100, 50));
}

TEST_F(GCanvasTest, a_line_height_is_given_in_units_of_the_system) {
    canvas.resize(200, 100);
    QImage image(200, 100, QImage::Format_RGB32);
    QPainter painter(&image);
    const GPC gpc(painter);
    const float pixels = static_cast<float>(QFontMetricsF(painter.font()).lineSpacing());
    struct Row {
        coord_system::Type type;
        float pixelsPerUnit;
    };
    for (const Row& row : {Row{coord_system::SCREEN, 1}, Row{coord_system::CARTESIAN, 10},
                           Row{coord_system::NDC, 50}, Row{coord_system::UV, 100}}) {
        set_system(row.type);
        EXPECT_FLOAT_EQ(canvas.line_height_logical(gpc), pixels / row.pixelsPerUnit) << row.type;
    }
}

TEST_F(GCanvasTest, draw_string_screen_paints_nothing_and_restores_the_painter) {
    canvas.resize(200, 100);
    set_system(coord_system::CARTESIAN);
    QImage image(200, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    const QImage before = image;
    QPainter painter(&image);
    GPC gpc(painter);
    canvas.setup_transform(gpc, ViewPort(200.0F, 100.0F));
    const QTransform transform = painter.transform();
    const QFont font = painter.font();
    canvas.draw_string_screen(gpc, {0, 0}, QStringLiteral("text"), 40);
    EXPECT_EQ(painter.transform(), transform);
    EXPECT_EQ(painter.font(), font);
    EXPECT_EQ(image, before);
}

TEST(GCanvas, a_null_mouse_event_ends_the_program) {
    Canvas canvas;
    EXPECT_EXIT(static_cast<void>(canvas.pos_from_mouse_event(nullptr)), testing::ExitedWithCode(1),
                "");
}
