// The fields of a message that the relay looks at. The rest passes through it unread.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace relay {

/// A field that is missing or no string is empty.
struct Envelope {
    std::string type;
    std::string subType;
    std::string from;
    std::string to;
    std::string pw;
    std::size_t textLength = 0;  ///< characters of "text"
};

/// Reads one message after the other with the same storage.
class EnvelopeReader {
public:
    EnvelopeReader();
    ~EnvelopeReader();

    /// The fields, valid until the next call. Null for what is no JSON object, nests deeper than 32
    /// levels, or has one of the fields twice: its receiver could take the other one.
    [[nodiscard]] const Envelope* read(std::string_view frame);

    /// Overwrites the password of the last message.
    void forget_password() noexcept;

private:
    struct Parser;
    std::unique_ptr<Parser> parser_;
};

}  // namespace relay
