// The envelope of every wire message: five fields, their JSON form, and the factory that makes the
// right message from a received object. A message is a short-lived value of the GUI thread.
#pragma once

#include <QString>

class QJsonObject;
class QJsonValue;

namespace ze::net {

class GWebSocket;

class GAbstractMessage {
public:
    QString type;     ///< class word, set by the constructor of each concrete message
    QString subType;  ///< second word, may be empty
    QString from;     ///< sender; a client writes its full name "group:user"
    QString to;       ///< addressee: "+" the server, "#" the other members of the group, "*" all
    int ident = 0;    ///< free number; shown and carried, without any other effect

    virtual ~GAbstractMessage() = default;

    /// One line for the log.
    [[nodiscard]] virtual QString to_string() const;
    /// Replaces all fields; a missing key or another JSON type gives an empty string or 0.
    virtual void from_json(const QJsonObject& object);
    /// Writes every key every time, empty values included.
    virtual void to_json(QJsonObject& object) const;

    /// The message that the object's "type" names, filled from the object. The caller owns it.
    /// An unknown or missing word gives a null pointer.
    [[nodiscard]] static GAbstractMessage* create_from_json(const QJsonObject& object);
    /// Sends the message as one text frame; a socket that is not valid gets an error line instead.
    void send(GWebSocket& socket) const;

    [[nodiscard]] bool is_type(const QString& word) const noexcept { return type == word; }
    [[nodiscard]] bool is_GPing() const noexcept;
    [[nodiscard]] bool is_GPong() const noexcept;
    [[nodiscard]] bool is_GPlay() const noexcept;
    [[nodiscard]] bool is_GMessage() const noexcept;
    [[nodiscard]] bool is_GAdmin() const noexcept;
    /// False for heartbeats, which would drown the log.
    [[nodiscard]] bool is_show_msg() const noexcept { return !is_GPing() && !is_GPong(); }
    [[nodiscard]] bool is_bye() const noexcept;
    /// Whether `to` is one of the two broadcast words "*" and "#".
    [[nodiscard]] bool is_kind_of_broadcast() noexcept;

    /// The object as JSON text, indented unless `compact`.
    [[nodiscard]] static QString obj_to_string(const QJsonObject& object, bool compact);
    /// The value as text for a log line: strings bare, arrays compact whatever the flag says,
    /// numbers with six digits, null and undefined as an empty string.
    [[nodiscard]] static QString value_to_string(const QJsonValue& value, bool compact);
    /// Logs the object's compact text at debug level.
    static void show_obj(const QJsonObject& object);

protected:
    explicit GAbstractMessage(const QString& word) : type(word) {}
    GAbstractMessage(const GAbstractMessage&) = default;
    GAbstractMessage& operator=(const GAbstractMessage&) = default;
};

}  // namespace ze::net
