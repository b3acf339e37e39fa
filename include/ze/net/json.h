// Helpers for JSON values: dumps for the log, and conversions that take whatever the other side
// may have sent.
#pragma once

#include <QJsonDocument>

#include <optional>

namespace ze::net::json {

// The dumps print at debug level, one value to a line, `indent` blanks in front of each.
void dump_object(unsigned indent, const QJsonObject& object);
void dump_array(unsigned indent, const QJsonArray& array);
void dump_value(unsigned indent, const QJsonValue& value);
/// An empty document prints a line that says so; one that is no object and no array is an error.
void dump_document(unsigned indent, const QJsonDocument& document);

[[nodiscard]] QString to_json_string(const QJsonObject& object, QJsonDocument::JsonFormat format);

/// A JSON number as float, anything else as 0; beyond the range of float it is infinity.
[[nodiscard]] float to_float(const QJsonValue& value) noexcept;
/// A JSON boolean, a number (true unless its integer value is 0), or one of the words "true",
/// "1", "false", "0" in any case with blanks around; nothing for any other value.
[[nodiscard]] std::optional<bool> to_bool(const QJsonValue& value);

}  // namespace ze::net::json
