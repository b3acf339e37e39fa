// A point in time in microseconds since 1970, with its fields and texts in local calendar time.
// Durations are plain numbers, see clock.h and duration.h.
#pragma once

#include <chrono>
#include <compare>
#include <ctime>
#include <memory>
#include <string>

namespace ze::time {

class GTime {
public:
    /// The fraction of a second in `getTheTimeString`. ze::time::FORM_SECOND has other numbers.
    enum FORMAT_SECOND : unsigned {
        NO_FRACTION = 0,
        MILLISECONDS = 1,
        MICROSECONDS = 2,
    };

    /// The present moment, or 1970.
    explicit GTime(bool now);
    explicit GTime(unsigned long long microseconds);
    GTime(const GTime& other);
    GTime& operator=(const GTime& other);
    virtual ~GTime();

    /// Sets the present moment plus `delta` microseconds.
    void from_now(unsigned long long delta);
    void from_mc(unsigned long long microseconds);

    /// Sets a local calendar time, in whole milliseconds. Fields out of their range carry over; a
    /// time that cannot be counted, some 292,000 years away, sets 1970.
    void from_tm(std::tm calendar);

    /// Sets a local calendar time: month and day count from 1. Otherwise as `from_tm`.
    void set_time(unsigned year, unsigned month, unsigned day, unsigned hour, unsigned minute,
                  unsigned second);

    void add(long seconds);
    void add_microseconds(unsigned long long mc);

    /// These compute in 32 bits and put the sign-extended sum in the place of the whole value, so
    /// that they are right only below 2^31 microseconds. Use `add_microseconds`.
    void add_seconds(long count);
    void add_minutes(long count);
    void add_hours(long count);
    void add_days(long count);
    void add_weeks(long count);
    void add_months(long count);
    void add_years(long count);
    void minus_microseconds(unsigned long long mc);

    [[nodiscard]] unsigned long long getMicroseconds() const noexcept;
    [[nodiscard]] unsigned long long getMilliseconds() const noexcept;
    [[nodiscard]] unsigned long long getSeconds() const noexcept;

    /// The raw count, which is in microseconds in spite of the name.
    [[nodiscard]] unsigned long long getNanoseconds() const noexcept;

    /// The milliseconds within the second, 0 to 999.
    [[nodiscard]] unsigned getRelativeMilliseconds() const noexcept;

    [[nodiscard]] int tm_hour() const noexcept;
    [[nodiscard]] int tm_min() const noexcept;
    [[nodiscard]] int tm_sec() const noexcept;
    [[nodiscard]] int tm_year() const noexcept;         ///< such as 2024
    [[nodiscard]] int tm_month() const noexcept;        ///< 1 to 12
    [[nodiscard]] int tm_day() const noexcept;          ///< 1 to 31
    [[nodiscard]] int tm_day_of_week() const noexcept;  ///< 0 is Sunday
    [[nodiscard]] int tm_yearDay() const noexcept;      ///< 1 to 366

    /// The name of the weekday in "de" or "ru"; in English for any other language.
    [[nodiscard]] std::string day_of_week(const std::string& language) const;

    /// Local time by a pattern of strftime, empty where it gives nothing; then the fraction.
    [[nodiscard]] std::string getTheTimeString(const std::string& format, FORMAT_SECOND form) const;
    [[nodiscard]] static std::string get_the_time(const std::string& format, FORMAT_SECOND form);

    /// "12:34:56" and the fraction that bits 8 (microseconds) and 7 (milliseconds) ask for.
    [[nodiscard]] std::string getTimeString(unsigned flags) const;

    [[nodiscard]] std::string toString(const std::string& format) const;
    [[nodiscard]] std::string toString_year_month_day() const;
    [[nodiscard]] std::string create_file_name(const std::string& format) const;

    /// The present moment as a file name that sorts by time: "2024-02-29---12-34-56".
    [[nodiscard]] static std::string create_second_file_name();

    /// "Thu, 29 Feb 2024 12:34:56 GMT", in GMT.
    [[nodiscard]] std::string create_GMT_time() const;

    /// The given text of the day, then "29 Feb 2024 12:34:56".
    [[nodiscard]] std::string create_Mail_time(const std::string& day) const;

    /// -1, 0 or 1.
    [[nodiscard]] int compare(const GTime& other) const noexcept;

    friend bool operator==(const GTime& a, const GTime& b) noexcept { return a.compare(b) == 0; }
    friend std::strong_ordering operator<=>(const GTime& a, const GTime& b) noexcept {
        return a.compare(b) <=> 0;
    }

private:
    using Microseconds = std::chrono::duration<long long, std::micro>;
    using TimePoint = std::chrono::time_point<std::chrono::system_clock, Microseconds>;

    [[nodiscard]] long long count() const noexcept;
    void set_count(unsigned long long count);
    void add_in_32_bits(unsigned long long mc);

    [[nodiscard]] long long whole_seconds() const noexcept;
    [[nodiscard]] unsigned long long rest_microseconds() const noexcept;
    [[nodiscard]] std::tm calendar() const noexcept;
    [[nodiscard]] std::string fraction(FORMAT_SECOND form) const;

    std::unique_ptr<TimePoint> point;
};

}  // namespace ze::time
