// Names of the world's languages by their ISO 639-1 codes.
#pragma once

#include <QString>

#include <map>
#include <utility>
#include <vector>

namespace ze::qt {

/// Code and English name, such as "pt" and "Portuguese".
using WorldLang = std::pair<QString, QString>;

/// All languages of ISO 639-1, by code.
[[nodiscard]] const std::map<QString, QString>& get_map_world_lang();
/// The twenty most spoken ones, by code.
[[nodiscard]] const std::map<QString, QString>& get_map_world_lang_20();

/// The tables anew; the functions above keep one each.
[[nodiscard]] std::map<QString, QString> create_world_lang();
[[nodiscard]] std::map<QString, QString> create_world_lang_20();
/// The twenty in the order in which a list shows them.
[[nodiscard]] std::vector<WorldLang> create_vector_world_lang_20();

}  // namespace ze::qt
