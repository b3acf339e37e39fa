#include "ze/qt/event/GTouchAutomat.h"

#include "ze/tools/format.h"

#include "support/LogCapture.h"

#include <QPointingDevice>
#include <QTouchEvent>

#include <cmath>
#include <string>
#include <vector>

using ze::qt::event::GTouchAutomat;

namespace {

constexpr double PI = 3.14159265358979323846;

QTouchEvent touch(QEvent::Type type, const QList<QPointF>& positions) {
    QList<QEventPoint> points;
    for (int i = 0; i < positions.size(); ++i) {
        points.append(QEventPoint(i, QEventPoint::Updated, positions[i], positions[i]));
    }
    return QTouchEvent(type, QPointingDevice::primaryPointingDevice(), Qt::NoModifier, points);
}

// Writes down what the automaton reports, in order.
struct Recorder {
    Recorder() {
        automat.delta_listener += [this](const QPointF& d) {
            reports.push_back(ze::str::xprintF(0, "delta $", d.toPoint()));
        };
        automat.pan_listener += [this](const int& pan) {
            reports.push_back(ze::str::xprintF(0, "pan $", pan));
        };
        automat.zoom_listener += [this](const float& z) {
            reports.push_back(ze::str::xprintF(0, "zoom $", z));
        };
        automat.rotate_listener += [this](const float& r) {
            reports.push_back(ze::str::xprintF(0, "rotate $", r));
        };
        log.ignore("");
    }

    void send(QEvent::Type type, const QList<QPointF>& positions) {
        QTouchEvent ev = touch(type, positions);
        automat.process_event(&ev);
    }
    void begin(const QList<QPointF>& positions) { send(QEvent::TouchBegin, positions); }
    void update(const QList<QPointF>& positions) { send(QEvent::TouchUpdate, positions); }

    test::LogCapture log{ze::log::TRACE};
    GTouchAutomat automat;
    std::vector<std::string> reports;
};

using Reports = std::vector<std::string>;

QPointF at_angle(double degrees, double distance) {
    return {distance * std::cos(degrees * PI / 180.0), distance * std::sin(degrees * PI / 180.0)};
}

}  // namespace

TEST(GTouchAutomat, the_first_contact_reports_nothing) {
    Recorder recorder;
    recorder.begin({{10, 10}});
    EXPECT_EQ(recorder.reports, Reports{});
}

TEST(GTouchAutomat, a_finger_that_stays_reports_a_delta_of_zero_and_no_pan) {
    Recorder recorder;
    recorder.begin({{10, 10}});
    recorder.update({{10, 10}});
    EXPECT_EQ(recorder.reports, Reports{"delta 0,0"});
}

TEST(GTouchAutomat, a_finger_that_moves_reports_delta_then_pan) {
    Recorder recorder;
    recorder.begin({{10, 10}});
    recorder.update({{13, 14}});
    recorder.update({{13, 4}});
    EXPECT_EQ(recorder.reports, (Reports{"delta 3,4", "pan 5", "delta 0,-10", "pan 10"}));
}

TEST(GTouchAutomat, an_update_without_a_begin_is_a_first_contact) {
    Recorder recorder;
    recorder.update({{10, 10}});
    EXPECT_EQ(recorder.reports, Reports{});
}

TEST(GTouchAutomat, each_event_that_ends_a_gesture_makes_the_next_contact_the_first) {
    struct Row {
        const char* name;
        QEvent::Type type;
        QList<QPointF> positions;
        Reports expected;
    };
    const std::vector<Row> rows{
        {"end", QEvent::TouchEnd, {{20, 10}}, {}},
        {"begin without a point", QEvent::TouchBegin, {}, {}},
        {"update without a point", QEvent::TouchUpdate, {}, {}},
        {"cancel is no step", QEvent::TouchCancel, {}, {"delta 90,90", "pan 127"}},
    };
    for (const Row& row : rows) {
        Recorder recorder;
        recorder.begin({{10, 10}});
        recorder.send(row.type, row.positions);
        recorder.update({{100, 100}});
        EXPECT_EQ(recorder.reports, row.expected) << row.name;
    }
}

TEST(GTouchAutomat, another_event_changes_nothing) {
    Recorder recorder;
    recorder.begin({{10, 10}});
    QEvent other(QEvent::MouseMove);
    recorder.automat.process_event(&other);
    recorder.update({{13, 14}});
    EXPECT_EQ(recorder.reports, (Reports{"delta 3,4", "pan 5"}));
}

TEST(GTouchAutomat, two_fingers_report_pan_then_zoom_then_rotation) {
    Recorder recorder;
    recorder.begin({{0, 0}, {10, 0}});
    recorder.update({{0, 0}, {0, 20}});
    EXPECT_EQ(recorder.reports, (Reports{"pan 11", "zoom 1.00", "rotate 90.00"}));
}

TEST(GTouchAutomat, a_third_finger_has_no_say) {
    Recorder recorder;
    recorder.begin({{0, 0}, {10, 0}, {500, 500}});
    recorder.update({{0, 0}, {10, 0}, {900, 100}});
    EXPECT_EQ(recorder.reports, Reports{});
}

TEST(GTouchAutomat, a_second_finger_arms_anew_and_reports_no_jump) {
    Recorder recorder;
    recorder.begin({{0, 0}, {10, 0}});
    recorder.update({{0, 0}});
    recorder.update({{0, 0}, {100, 100}});
    EXPECT_EQ(recorder.reports, Reports{});
}

TEST(GTouchAutomat, a_finger_that_is_lifted_arms_the_other_anew) {
    Recorder recorder;
    recorder.begin({{0, 0}, {100, 0}});
    recorder.update({{80, 0}});
    recorder.update({{83, 4}});
    EXPECT_EQ(recorder.reports, (Reports{"delta 3,4", "pan 5"}));
}

TEST(GTouchAutomat, a_zoom_of_exactly_the_limit_reports_nothing) {
    Recorder recorder;
    recorder.begin({{0, 0}, {1000, 0}});
    recorder.update({{0, 0}, {1001, 0}});
    recorder.update({{0, 0}, {1004, 0}});
    EXPECT_EQ(recorder.reports, (Reports{"pan 1", "pan 2", "zoom 0.00"}));
}

TEST(GTouchAutomat, a_rotation_of_exactly_the_limit_reports_nothing) {
    Recorder recorder;
    recorder.begin({{0, 0}, at_angle(0.0, 100)});
    recorder.update({{0, 0}, at_angle(0.1, 100)});
    recorder.update({{0, 0}, at_angle(0.25, 100)});
    EXPECT_EQ(recorder.reports, Reports{"rotate 0.15"});
}

TEST(GTouchAutomat, a_last_distance_of_zero_skips_the_zoom_only) {
    Recorder recorder;
    recorder.begin({{0, 0}, {0, 0}});
    recorder.update({{0, 0}, {0, 0.4}});
    EXPECT_EQ(recorder.reports, Reports{"rotate 90.00"});
}

TEST(GTouchAutomat, an_angle_that_wraps_reports_the_whole_jump) {
    Recorder recorder;
    recorder.begin({{0, 0}, at_angle(179, 1000)});
    recorder.update({{0, 0}, at_angle(-179, 1000)});
    EXPECT_EQ(recorder.reports, (Reports{"pan 17", "rotate -358.00"}));
}

TEST(GTouchAutomat, reset_state_makes_the_next_contact_the_first) {
    Recorder recorder;
    recorder.begin({{10, 10}});
    recorder.automat.reset_state();
    recorder.update({{100, 100}});
    EXPECT_EQ(recorder.reports, Reports{});
}

TEST(GTouchAutomat, two_fingers_leave_their_lines_in_the_log) {
    test::LogCapture log(ze::log::TRACE);
    log.ignore("Listener::~Listener");
    GTouchAutomat automat;
    for (const QPointF& second : {QPointF(10, 0), QPointF(0, 20)}) {
        QTouchEvent ev = touch(QEvent::TouchUpdate, {{0, 0}, second});
        automat.process_event(&ev);
    }
    automat.reset_state();
    EXPECT_EQ(log.lines_with_level(),
              (std::vector<std::string>{
                  "TRA GTouchAutomat::handle_two_finger", "TRA GTouchAutomat::handle_two_finger",
                  "DEB GTouchAutomat::on_zoom, delta:1.00",
                  "DEB GTouchAutomat::on_rotate, degree:90.00", "TRA GTouchAutomat::reset_state"}));
}

TEST(GTouchAutomat, a_double_tab_is_only_logged) {
    struct Tapped : GTouchAutomat {
        using GTouchAutomat::on_double_tab;
    };
    test::LogCapture log;
    log.ignore("Listener::~Listener");
    Tapped automat;
    automat.on_double_tab();
    EXPECT_EQ(log.lines(), std::vector<std::string>{"GTouchAutomat::on_double_tab"});
}
