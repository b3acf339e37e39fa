// The window of the second generation. Its two start buttons send the ball the same way: "start"
// with the continuous motion, "test 2" with the step of the first generation.
#pragma once

#include "ze/qt/GMainWindow.h"

#include <QString>

namespace vork2d::v2 {

class PlayField;

class Window : public ze::qt::GMainWindow {
public:
    /// Members only; setup() makes the widgets.
    Window();
    ~Window() override;

    void setup() override;
    void ini() override;

    /// The interval of the frame timer, milliseconds. It has no effect on the speed of the ball.
    void on_refresh_delay_set(int ms);
    /// The time of travel, milliseconds: the divider of the field's width that gives the speed.
    void on_time_devider_speed_set(int ms);

    QString titleBase = QStringLiteral("vork2D/v2");
    PlayField* playField = nullptr;

private:
    void setup_play_field(ze::qt::GPanel* panMain);
    void setup_pan_buttons(ze::qt::GPanel* panMain);
};

}  // namespace vork2d::v2
