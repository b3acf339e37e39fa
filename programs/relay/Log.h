// One line per event, such as
//     2026-11-21T09:36:58.123Z login name="group1:Nilo" address="127.0.0.1"
// No password and no chat text is ever handed to it.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

namespace relay {

class Log {
public:
    /// Takes a finished line without its line feed.
    using Sink = std::function<void(std::string_view line)>;

    /// One name and its value. A text is put in quotes and escaped, so that a name from the wire
    /// can not forge a line.
    struct Field {
        Field(std::string_view fieldName, std::string_view text);
        Field(std::string_view fieldName, std::uint64_t number);

        std::string_view name;
        std::string value;
    };

    explicit Log(Sink sink) : sink_(std::move(sink)) {}

    void event(std::string_view word, std::initializer_list<Field> fields = {}) const;

private:
    Sink sink_;
};

}  // namespace relay
