// The levels as the words of a line and of the command line.
#include "ze/log/log.h"

#include <QString>

#include <algorithm>
#include <array>

namespace ze::log {
namespace {

constexpr std::array<const char*, 5> COLUMN_WORDS = {"ERR", "WRN", "INF", "DEB", "TRA"};

struct LevelWord {
    const char* word;
    LOG_LEVEL level;
};

constexpr std::array<LevelWord, 14> LEVEL_WORDS = {{
    {"err", ERROR},
    {"error", ERROR},
    {"wrn", WARN},
    {"warn", WARN},
    {"warning", WARN},
    {"inf", INFO},
    {"in", INFO},
    {"info", INFO},
    {"deb", DEBUG},
    {"debug", DEBUG},
    {"tra", TRACE},
    {"trace", TRACE},
    {"no", NOP},
    {"nop", NOP},
}};

}  // namespace

unsigned parse_log_level(const QString& text, unsigned fallback) {
    bool flagNumber = false;
    const unsigned number = text.toUInt(&flagNumber, 10);
    if (flagNumber) {
        return std::min<unsigned>(number, TRACE);
    }
    const QString lower = text.toLower();
    const auto found =
        std::find_if(LEVEL_WORDS.begin(), LEVEL_WORDS.end(),
                     [&lower](const LevelWord& row) { return lower == QLatin1String(row.word); });
    return found != LEVEL_WORDS.end() ? found->level : fallback;
}

std::string logLevel_to_string(unsigned level) {
    return level < COLUMN_WORDS.size() ? COLUMN_WORDS[level] : "";
}

QString logLevel_to_qstring(unsigned level) {
    return QString::fromStdString(logLevel_to_string(level));
}

}  // namespace ze::log
