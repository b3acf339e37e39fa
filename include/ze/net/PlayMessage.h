// The view through which a play payload is read and written. It owns nothing: it must not outlive
// the object, nor the value that it commits to, and lives for one scope.
#pragma once

#include "ze/math/ORIENT2D.h"

#include <QString>

#include <optional>
#include <string>

#include <glm/vec2.hpp>

class QJsonObject;
class QJsonValue;
class QKeySequence;

namespace ze::net {

class PlayMessage {
public:
    /// A view that commits nothing.
    explicit PlayMessage(QJsonObject& object) noexcept;
    /// A view whose end stores the object in `target` and thereby replaces what stood there.
    PlayMessage(QJsonObject& object, QJsonValue& target) noexcept;
    ~PlayMessage();
    Q_DISABLE_COPY_MOVE(PlayMessage)

    void set_cmd(const QString& cmd);
    void set_name(const QString& name);
    void set_string(const QString& key, const QString& value);
    void set_std_string(const QString& key, const std::string& value);
    void set_int(const QString& key, int value);
    void set_float(const QString& key, float value);
    void set_double(const QString& key, double value);
    /// Does nothing: no boolean ever reaches a play payload.
    void set_bool(const QString& key, bool value);
    /// As the text "x,y" with six significant digits.
    void set_vector2(const QString& key, const glm::vec2& value);
    void set_orient(math::ORIENT2D::Type orient);
    /// The command and the keys, in the text form of the sender's platform.
    void set_key_sequence(const QKeySequence& keys, bool pressed);

    [[nodiscard]] bool is_cmd(const QString& cmd) const;
    [[nodiscard]] bool is_cmd_start() const;
    [[nodiscard]] bool is_cmd_stop() const;
    [[nodiscard]] bool is_cmd_setPos() const;
    [[nodiscard]] bool is_cmd_key_pressed() const;
    [[nodiscard]] bool is_cmd_orient() const;
    [[nodiscard]] bool is_cmd_out_of_field() const;
    [[nodiscard]] bool is_cmd_travel() const;
    [[nodiscard]] bool is_cmd_setBall() const;

    [[nodiscard]] bool is_name(const QString& name) const;
    /// Whether the key holds a string equal to the text; silent.
    [[nodiscard]] bool is_string(const QString& key, const QString& text) const;
    [[nodiscard]] bool is_std_string(const QString& key, const std::string& text) const;

    // A value that is missing or of another type gives an error line and the default; a missing
    // string, or an empty one, gives an error line and an empty string.
    [[nodiscard]] QString get_name() const;
    [[nodiscard]] QString get_string(const QString& key) const;
    [[nodiscard]] std::string get_std_string(const QString& key) const;
    /// A number with a fraction, or beyond the range of int, reads as 0 and not as the default.
    [[nodiscard]] int get_int(const QString& key, int def) const;
    /// A number beyond the range of float reads as infinity.
    [[nodiscard]] float get_float(const QString& key, float def) const;
    [[nodiscard]] double get_double(const QString& key, double def) const;
    /// Takes booleans, numbers (not 0) and the words "true", "false", "1", "0" in any case.
    [[nodiscard]] bool get_bool(const QString& key, bool def) const;
    /// A text that is no vector gives the default in silence.
    [[nodiscard]] glm::vec2 get_vector2(const QString& key, const glm::vec2& def) const;
    /// An unreadable word gives LEFT and an error line.
    [[nodiscard]] math::ORIENT2D::Type get_orient() const;
    /// Reads the portable text form, so that only keys named alike on all platforms come across.
    [[nodiscard]] QKeySequence get_key_sequence() const;

    /// "'key'='value', ..." for a log line.
    [[nodiscard]] QString as_string() const;
    /// Logs the keys and values at debug level, `indent` blanks in front.
    void show(unsigned indent) const;

private:
    QJsonObject* payload;
    QJsonValue* commitTarget;  // null in a view made for reading

    [[nodiscard]] QString text_of(const QString& key, const char* operation) const;
    [[nodiscard]] std::optional<QJsonValue> number_of(const QString& key,
                                                      const char* operation) const;
};

}  // namespace ze::net
