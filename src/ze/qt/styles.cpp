#include "ze/qt/styles.h"

#include "ze/log/exits.h"
#include "ze/qt/themes.h"
#include "ze/tools/format.h"

#include <QSlider>

namespace ze::qt::styles {

namespace {

struct SliderColors {
    const char* handle;
    const char* grooveBorder;
    const char* groove;
};

SliderColors slider_colors(unsigned int theme) {
    if (theme == themes::DARK || theme == themes::GREEN) {
        return {"#6FA8C9", "#555", "#2b2b2b"};
    }
    return {"#4A7B9B", "#bbb", "#eee"};
}

QString slider_sheet(Qt::Orientation orientation, const SliderColors& colors) {
    const bool horizontal = orientation == Qt::Horizontal;
    const char* direction = horizontal ? "horizontal" : "vertical";
    return ze::str::qprintF(
        "QSlider::handle:$ {    background: $;    width: $px;    height: $px;"
        "    margin: -10px -10px;    border-radius: 10px;}"
        "QSlider::groove:$ {    border: 1px solid $;    background: $;    $: 10px;"
        "    margin: 0px;}",
        direction, colors.handle, horizontal ? 30 : 40, horizontal ? 40 : 30, direction,
        colors.grooveBorder, colors.groove, horizontal ? "height" : "width");
}

}  // namespace

void set_slider_handle(QSlider* slider, Qt::Orientation orientation, unsigned int theme) {
    if (slider == nullptr) {
        ze::nullPointerHandling("src/ze/qt/styles", __LINE__, QStringLiteral("slider == NULL"));
    }
    slider->setStyleSheet(slider_sheet(orientation, slider_colors(theme)));
}

}  // namespace ze::qt::styles
