// JSON as it stands in a test: an object from text, and values back as comparable text.
#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <string>
#include <vector>

namespace test {

using Lines = std::vector<std::string>;

inline QJsonObject object_of(const char* json) {
    return QJsonDocument::fromJson(QByteArray(json)).object();
}

/// A value that cannot stand alone in a document: the text is that of an array's one element.
inline QJsonValue value_of(const std::string& json) {
    return QJsonDocument::fromJson(QByteArray::fromStdString("[" + json + "]")).array().at(0);
}

inline std::string text_of(const QJsonObject& object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString();
}

template <class Message>
std::string wire_text(const Message& message) {
    QJsonObject object;
    message.to_json(object);
    return text_of(object);
}

template <class Message>
Message read(const char* json) {
    Message message;
    message.from_json(object_of(json));
    return message;
}

}  // namespace test
