// Drawing maps the field to the canvas and counts the frames drawn.
#include "ze/log/pp.h"
#include "ze/qt/GPC.h"
#include "ze/tools/clock.h"

#include "PlayField.h"
#include "PlayStats.h"

#include <QFontMetricsF>

namespace vork2d::v5 {

namespace {

constexpr float LABEL_MARGIN = 50;    // field units from the left or right edge
constexpr float LABEL_Y = 160;        // field units above the middle
constexpr float LABEL_INFO_Y = -160;  // field units
constexpr float CROSS_WIDTH = 0.5f;   // pixels
constexpr QRgb LABEL_YELLOW = qRgba(255, 255, 0, 128);
constexpr QRgb LABEL_WHITE = qRgba(255, 255, 255, 128);
constexpr unsigned long long MS_FPS = 1000;  // how long frames are counted
// Of a longer text only both ends are laid out: a name off the wire can be megabytes.
constexpr qsizetype LABEL_END = 100;  // characters

/// The text as wide as there is room, in field units: of a longer one the middle is left out, for
/// the points stand at its end.
QString elided(const ze::qt::GPC& gpc, const QString& text, float room) {
    const QString ends = text.size() <= 2 * LABEL_END
                             ? text
                             : text.left(LABEL_END) + QChar(0x2026) + text.right(LABEL_END);
    return QFontMetricsF(gpc.font()).elidedText(ends, Qt::ElideMiddle, static_cast<qreal>(room));
}

}  // namespace

void PlayField::draw(ze::qt::GPC& gpc, const ze::math::Rect& rect) {
    playStats.frames += 1;
    gpc.fill_rect(rect, colorBackground);
    draw_labels(gpc, rect);
    paddleLeft.color = is_left_side() ? Qt::yellow : Qt::white;
    paddleRight.color = is_left_side() ? Qt::white : Qt::yellow;
    paddleLeft.draw(gpc);
    paddleRight.draw(gpc);
    ball.draw(gpc);
    count_frame(ze::time::get_steady_milli_seconds());
    draw_cross(gpc);
}

void PlayField::draw_labels(ze::qt::GPC& gpc, const ze::math::Rect& rect) const {
    gpc.set_font_point_size(static_cast<float>(fontSize));  // measured as it is drawn
    const float room = rect.w * 0.5f - LABEL_MARGIN;
    const QString left = elided(gpc, textLeft, room);
    const QString right = elided(gpc, textRight, room);
    const float xLeft = rect.left() + LABEL_MARGIN;
    const float xRight = rect.right() - LABEL_MARGIN - gpc.measure_string(right).width;
    const QColor white = QColor::fromRgba(LABEL_WHITE);
    gpc.draw_text({xLeft, LABEL_Y}, left, fontSize, QColor::fromRgba(LABEL_YELLOW), ze::qt::BOTTOM);
    gpc.draw_text({xRight, LABEL_Y}, right, fontSize, white, ze::qt::BOTTOM);
    if (!textInfo.isEmpty()) {
        gpc.draw_text({xLeft, LABEL_INFO_Y}, textInfo, fontSize, white, ze::qt::BOTTOM);
    }
}

void PlayField::draw_cross(ze::qt::GPC& gpc) const {
    const auto draw = [&gpc](const glm::vec2& from, const glm::vec2& to) {
        gpc.draw_line(from, to, Qt::white, CROSS_WIDTH, Qt::DotLine, ze::qt::COSMETIC_ON);
    };
    draw({left(), 0}, {right(), 0});
    draw({0, top()}, {0, bottom()});
}

void PlayField::count_frame(unsigned long long msNow) {
    countFrames += 1;
    if (tmFpsStart == 0) {
        tmFpsStart = msNow;
        return;
    }
    if (!is_state_PLAY() || msNow - tmFpsStart < MS_FPS) {
        return;
    }
    ze::pp_trace("FPS:$", countFrames);
    listenerFps.fire_event(countFrames);
    countFrames = 0;
    tmFpsStart = msNow;
}

}  // namespace vork2d::v5
