// Turns the touch events of the whole application into pan, delta, zoom and rotate notifications,
// with one finger or with two. It neither consumes events nor knows which widget was touched.
#pragma once

#include "ze/tools/Listener.h"

#include <QPointF>

class QEvent;

namespace ze::qt::event {

class GTouchAutomat {
public:
    Listener<int>
        pan_listener;  ///< path of the finger, or of the middle between two, in whole pixels
    Listener<float>
        zoom_listener;  ///< change of the distance of two fingers: 0.5 is half as far again
    Listener<float>
        rotate_listener;  ///< change of the angle of two fingers in degrees, not normalised
    Listener<QPointF> delta_listener;  ///< movement of one finger in pixels

    GTouchAutomat() = default;
    virtual ~GTouchAutomat() = default;
    GTouchAutomat(const GTouchAutomat&) = delete;
    GTouchAutomat& operator=(const GTouchAutomat&) = delete;

    /// Takes one event; anything but the begin, update and end of a touch changes nothing.
    void process_event(QEvent* ev);

    /// Forgets the gesture, so that the next contact reports nothing.
    void reset_state();

protected:
    /// How far apart in pixels two taps of one double tap may lie, for a derived class that looks
    /// for taps; the automaton itself does not.
    int doubleTabReach{100};

    virtual void on_delta(QPointF delta);
    virtual void on_pan(int pixels);
    virtual void on_zoom(float delta);
    virtual void on_rotate(float degrees);
    virtual void on_double_tab();

private:
    enum State { IDLE = 0, ONE_FINGER = 1, TWO_FINGERS = 2 };

    void handle_one_finger(QPointF pos);
    void handle_two_finger(QPointF a, QPointF b);
    void report_pan(QPointF delta);
    void report_zoom(double distance);
    void report_rotation(double angle);

    State state{IDLE};
    QPointF ptLast;
    double distanceLast{0.0};
    double angleLast{0.0};  // radians
    QPointF ptCenterLast;
};

}  // namespace ze::qt::event
