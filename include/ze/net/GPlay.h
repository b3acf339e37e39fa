// One event of the game on its way to the other client: the envelope, the game's name and a
// payload. Each set_ operation replaces the whole payload; PlayMessage is the view to read it with.
#pragma once

#include "ze/math/ORIENT2D.h"
#include "ze/net/GAbstractMessage.h"

#include <QJsonValue>

#include <vector>

#include <glm/vec2.hpp>

class QKeyEvent;

namespace ze::net {

class GPlay : public GAbstractMessage {
public:
    QString game;        ///< name of the game; no reader looks at it
    QJsonValue payload;  ///< the command object, null in a fresh message

    GPlay();
    /// A message with these three fields and a null payload.
    [[nodiscard]] static GPlay from_args(const QString& from, const QString& to,
                                         const QString& game);

    [[nodiscard]] QString to_string() const override;
    void from_json(const QJsonObject& object) override;
    void to_json(QJsonObject& object) const override;

    [[nodiscard]] bool is_subtype_LIST_USER() const noexcept;

    /// "start" on the sender's side; of the travel time in ms only the low 32 bits go out.
    void set_start(math::ORIENT2D::Type orient, unsigned long long ms);
    void set_stop();
    /// "travel": a new travel time in ms, of which only the low 32 bits go out.
    void set_travel(unsigned long long ms);
    /// "points": the score as the sender counts it.
    void set_points(int me, int opponent);
    /// "orientation": the side of the sender.
    void set_orient(math::ORIENT2D::Type orient);
    /// "out_of_field": the side on which the ball left.
    void set_ball_out_of_field(math::ORIENT2D::Type orient);
    /// "setBall": position and direction in field coordinates, velocity in field units per second.
    void set_ball(const glm::vec2& pos, const glm::vec2& dir, float velocity);
    /// "keyPressed" for a key press, "keyReleased" for any other event.
    /// A null event logs an error line and leaves the payload as it was.
    void set_key_event(const QKeyEvent* ev);
    /// "string" with one free key; "cmd" as the key takes the command's place.
    void set_string(const QString& key, const QString& value);

    // For a payload that is a plain value. Total: whatever does not convert gives `def`.
    [[nodiscard]] QString payload_as_string() const;
    [[nodiscard]] int payload_as_int(int def) const;
    [[nodiscard]] double payload_as_double(double def) const;
    [[nodiscard]] bool payload_as_bool(bool def) const;

    // For a payload that is an array: an element of another type gives an empty string or 0.
    // Any other payload gives an empty vector.
    [[nodiscard]] std::vector<QString> payload_as_array_string() const;
    [[nodiscard]] std::vector<int> payload_as_array_int() const;
    [[nodiscard]] std::vector<float> payload_as_array_float() const;
    [[nodiscard]] std::vector<double> payload_as_array_double() const;
};

}  // namespace ze::net
