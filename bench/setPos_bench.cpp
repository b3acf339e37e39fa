// One "setPos", the bulk of the traffic: made, written, read and looked at, by the message classes
// and by hand with QJsonDocument.

#include "ze/math/ORIENT2D.h"
#include "ze/net/GPlay.h"
#include "ze/net/PLAY_CMD.h"
#include "ze/net/PlayMessage.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <memory>

#include <benchmark/benchmark.h>
#include <glm/vec2.hpp>

namespace {

namespace ORIENT2D = ze::math::ORIENT2D;
using namespace Qt::StringLiterals;

constexpr glm::vec2 POS{-380.5F, 123.4567F};

QByteArray write_ours(const glm::vec2& pos) {
    ze::net::GPlay play = ze::net::GPlay::from_args(u"group1:Nilo"_s, u"#"_s, u"vork"_s);
    {
        QJsonObject object;
        ze::net::PlayMessage message(object, play.payload);
        message.set_cmd(ze::net::PLAY_CMD::SET_POS);
        message.set_vector2(u"pos"_s, pos);
        message.set_string(u"object"_s, u"paddle"_s);
        message.set_std_string(u"side"_s, ORIENT2D::to_string(ORIENT2D::LEFT));
    }
    QJsonObject wire;
    play.to_json(wire);
    return QJsonDocument(wire).toJson(QJsonDocument::Compact);
}

glm::vec2 read_ours(const QByteArray& text) {
    const std::unique_ptr<ze::net::GAbstractMessage> received(
        ze::net::GAbstractMessage::create_from_json(QJsonDocument::fromJson(text).object()));
    const auto* const play = dynamic_cast<const ze::net::GPlay*>(received.get());
    QJsonObject object = play->payload.toObject();
    const ze::net::PlayMessage message(object);
    const bool left = message.is_cmd_setPos() && message.is_string(u"object"_s, u"paddle"_s) &&
                      message.is_std_string(u"side"_s, "LEFT");
    return left ? message.get_vector2(u"pos"_s, {}) : glm::vec2();
}

QByteArray write_by_hand(const glm::vec2& pos) {
    QJsonObject payload;
    payload.insert("cmd"_L1, u"setPos"_s);
    payload.insert("pos"_L1, QString::number(static_cast<double>(pos.x)) + u',' +
                                 QString::number(static_cast<double>(pos.y)));
    payload.insert("object"_L1, u"paddle"_s);
    payload.insert("side"_L1, u"LEFT"_s);
    QJsonObject wire;
    wire.insert("type"_L1, u"PLAY"_s);
    wire.insert("subType"_L1, QString());
    wire.insert("from"_L1, u"group1:Nilo"_s);
    wire.insert("to"_L1, u"#"_s);
    wire.insert("ident"_L1, 0);
    wire.insert("game"_L1, u"vork"_s);
    wire.insert("payload"_L1, payload);
    return QJsonDocument(wire).toJson(QJsonDocument::Compact);
}

struct Envelope {
    QString type, subType, from, to, game;
    int ident = 0;
    QJsonObject payload;
};

glm::vec2 read_by_hand(const QByteArray& text) {
    const QJsonObject wire = QJsonDocument::fromJson(text).object();
    const Envelope play{wire.value("type"_L1).toString(),   wire.value("subType"_L1).toString(),
                        wire.value("from"_L1).toString(),   wire.value("to"_L1).toString(),
                        wire.value("game"_L1).toString(),   wire.value("ident"_L1).toInt(),
                        wire.value("payload"_L1).toObject()};
    const bool left = play.type == "PLAY"_L1 && play.payload.value("cmd"_L1) == "setPos"_L1 &&
                      play.payload.value("object"_L1) == "paddle"_L1 &&
                      play.payload.value("side"_L1) == "LEFT"_L1;
    const QString pos = play.payload.value("pos"_L1).toString();
    const qsizetype comma = pos.indexOf(u',');
    const QStringView x = QStringView(pos).left(comma);
    const QStringView y = QStringView(pos).mid(comma + 1);
    return left ? glm::vec2(x.toFloat(), y.toFloat()) : glm::vec2();
}

template <QByteArray (*WRITE)(const glm::vec2&), glm::vec2 (*READ)(const QByteArray&)>
void setPos(benchmark::State& state) {
    for (auto _ : state) {
        glm::vec2 pos = POS;
        benchmark::DoNotOptimize(pos.x);
        glm::vec2 back = READ(WRITE(pos));
        benchmark::DoNotOptimize(back.x);
        if (back.x != POS.x) {
            state.SkipWithError("the position did not come through");
            return;
        }
    }
}

BENCHMARK(setPos<write_ours, read_ours>)->Name("setPos/ours");
BENCHMARK(setPos<write_by_hand, read_by_hand>)->Name("setPos/peer");

}  // namespace
