// The input is a text frame as the relay may send it. The message made from it is shown, written
// and read again; of a play message every key is read in every way.

#include "ze/net/GAdmin.h"
#include "ze/net/GMessage.h"
#include "ze/net/GPlay.h"
#include "ze/net/PlayMessage.h"
#include "ze/net/json.h"

#include "support/check.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeySequence>

#include <cstdint>
#include <memory>

namespace net = ze::net;

namespace {

void read_key(const net::PlayMessage& message, const QString& key) {
    const QString text = message.get_string(key);
    FUZZ_CHECK(text.isEmpty() || message.is_string(key, text));
    static_cast<void>(message.get_std_string(key));
    static_cast<void>(message.get_int(key, 0));
    static_cast<void>(message.get_float(key, 0));
    static_cast<void>(message.get_double(key, 0));
    static_cast<void>(message.get_bool(key, false));
    static_cast<void>(message.get_vector2(key, {}));
}

void read_command(QJsonObject object) {
    const net::PlayMessage message(object);
    for (const QString& key : object.keys()) {
        read_key(message, key);
    }
    FUZZ_CHECK(message.get_orient() <= ze::math::ORIENT2D::DOWN);
    static_cast<void>(message.get_key_sequence());
    static_cast<void>(message.is_cmd_setPos());
    static_cast<void>(message.as_string());
    message.show(0);
}

void read_play(const net::GPlay& play) {
    static_cast<void>(play.payload_as_int(0));
    static_cast<void>(play.payload_as_double(0));
    static_cast<void>(play.payload_as_bool(false));
    const std::size_t count = play.payload_as_array_string().size();
    FUZZ_CHECK(play.payload_as_array_int().size() == count);
    FUZZ_CHECK(play.payload_as_array_float().size() == count);
    FUZZ_CHECK(play.payload_as_array_double().size() == count);
    read_command(play.payload.toObject());
}

void read_chat(const net::GMessage& chat) {
    const QString user = chat.get_the_user(chat.from);
    FUZZ_CHECK(user.isEmpty() || user != chat.from);
    static_cast<void>(chat.get_flags());
}

QJsonObject written(const net::GAbstractMessage& message) {
    QJsonObject object;
    message.to_json(object);
    return object;
}

void read_message(const net::GAbstractMessage& message) {
    static_cast<void>(message.to_string());
    if (const auto* const play = dynamic_cast<const net::GPlay*>(&message)) {
        read_play(*play);
    } else if (const auto* const chat = dynamic_cast<const net::GMessage*>(&message)) {
        read_chat(*chat);
    } else if (const auto* const admin = dynamic_cast<const net::GAdmin*>(&message)) {
        admin->show(0);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray frame(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QJsonDocument document = QJsonDocument::fromJson(frame);
    net::json::dump_document(0, document);

    using Message = std::unique_ptr<net::GAbstractMessage>;
    if (const Message message{net::GAbstractMessage::create_from_json(document.object())}) {
        read_message(*message);
        const QJsonObject wire = written(*message);
        const Message again(net::GAbstractMessage::create_from_json(wire));
        FUZZ_CHECK(again != nullptr);
        FUZZ_CHECK(written(*again) == wire);
    }
    return 0;
}
