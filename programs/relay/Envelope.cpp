#include "Envelope.h"

#include "utf8.h"

#include <boost/json/basic_parser_impl.hpp>
#include <openssl/crypto.h>

namespace relay {

namespace {

namespace json = boost::json;
using Error = json::error_code;

constexpr std::size_t MAX_DEPTH = 32;

/// Collects the strings of the outermost object while the parser walks over the text.
class Collector {
public:
    static constexpr std::size_t max_object_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_array_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_key_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_string_size = static_cast<std::size_t>(-1);

    Collector() = default;
    Collector(const Collector&) = delete;  // fields_ points into the object
    Collector& operator=(const Collector&) = delete;

    Envelope envelope;

    void clear() {
        for (Field& field : fields_) {
            field.flagSeen = false;
            field.text.clear();
        }
        envelope.textLength = 0;
        depth_ = 0;
        current_ = nullptr;
        key_.clear();
    }

    bool on_document_begin(Error&) { return true; }
    bool on_document_end(Error&) { return true; }
    bool on_object_begin(Error&) { return enter(); }
    bool on_object_end(std::size_t, Error&) { return leave(); }
    bool on_array_begin(Error& ec) { return require_inside(ec) && enter(); }
    bool on_array_end(std::size_t, Error&) { return leave(); }
    bool on_number_part(json::string_view, Error&) { return true; }
    bool on_int64(std::int64_t, json::string_view, Error& ec) { return require_inside(ec); }
    bool on_uint64(std::uint64_t, json::string_view, Error& ec) { return require_inside(ec); }
    bool on_double(double, json::string_view, Error& ec) { return require_inside(ec); }
    bool on_bool(bool, Error& ec) { return require_inside(ec); }
    bool on_null(Error& ec) { return require_inside(ec); }
    bool on_comment_part(json::string_view, Error&) { return true; }
    bool on_comment(json::string_view, Error&) { return true; }

    bool on_key_part(json::string_view part, std::size_t, Error&) {
        if (depth_ == 1) {
            key_.append(part.data(), part.size());
        }
        return true;
    }

    bool on_key(json::string_view part, std::size_t, Error& ec) {
        if (depth_ != 1) {
            return true;
        }
        key_.append(part.data(), part.size());
        current_ = field_of(key_);
        key_.clear();
        return claim(ec);
    }

    bool on_string_part(json::string_view part, std::size_t, Error& ec) {
        return add(part) && require_inside(ec);
    }
    bool on_string(json::string_view part, std::size_t, Error& ec) {
        return add(part) && require_inside(ec);
    }

private:
    struct Field {
        std::string_view key;
        std::string& text;
        bool flagSeen = false;
    };

    bool enter() {
        ++depth_;
        return true;
    }
    bool leave() {
        --depth_;
        return true;
    }

    bool require_inside(Error& ec) {
        if (depth_ == 0) {
            ec = json::error::not_object;
        }
        return depth_ != 0;
    }

    Field* field_of(std::string_view key) {
        for (Field& field : fields_) {
            if (field.key == key) {
                return &field;
            }
        }
        return nullptr;
    }

    bool claim(Error& ec) {
        if (current_ == nullptr) {
            return true;
        }
        if (current_->flagSeen) {
            ec = json::error::syntax;
            return false;
        }
        current_->flagSeen = true;
        return true;
    }

    bool add(json::string_view part) {
        if (depth_ == 1 && current_ != nullptr) {
            current_->text.append(part.data(), part.size());
        }
        return true;
    }

    std::string text_;
    Field fields_[6] = {{"type", envelope.type}, {"subType", envelope.subType},
                        {"from", envelope.from}, {"to", envelope.to},
                        {"pw", envelope.pw},     {"text", text_}};
    Field* current_ = nullptr;
    std::string key_;
    std::size_t depth_ = 0;

    friend class relay::EnvelopeReader;
};

json::parse_options options() {
    json::parse_options result;
    result.max_depth = MAX_DEPTH;
    return result;
}

}  // namespace

struct EnvelopeReader::Parser : json::basic_parser<Collector> {
    Parser() : json::basic_parser<Collector>(options()) {}
};

EnvelopeReader::EnvelopeReader() : parser_(std::make_unique<Parser>()) {}
EnvelopeReader::~EnvelopeReader() = default;

const Envelope* EnvelopeReader::read(std::string_view frame) {
    Collector& collector = parser_->handler();
    collector.clear();
    parser_->reset();
    Error error;
    const std::size_t used = parser_->write_some(false, frame.data(), frame.size(), error);
    if (error || used != frame.size()) {
        return nullptr;
    }
    collector.envelope.textLength = count_code_points(collector.text_);
    return &collector.envelope;
}

void EnvelopeReader::forget_password() noexcept {
    std::string& password = parser_->handler().envelope.pw;
    OPENSSL_cleanse(password.data(), password.size());
}

}  // namespace relay
