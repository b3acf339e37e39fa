// Lets a failed comparison show Qt's texts as texts.
#pragma once

#include <QLatin1String>
#include <QString>

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QLatin1String& text, std::ostream* out) {
    *out << '"' << text.data() << '"';
}
