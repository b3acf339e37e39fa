// A time zone for the life of this object, so that local times in a test do not depend on the
// machine.
#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <ctime>

namespace test {

class TimeZone {
public:
    /// In the form of the TZ variable: "CET-1" is one hour ahead of UTC.
    explicit TimeZone(const char* zone) : before(qgetenv("TZ")) { set(zone); }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;
    ~TimeZone() { set(before); }

private:
    static void set(const QByteArray& zone) {
        if (zone.isEmpty()) {
            qunsetenv("TZ");
        } else {
            qputenv("TZ", zone);
        }
        tzset();
    }

    const QByteArray before;
};

}  // namespace test
