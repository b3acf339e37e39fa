// The values that QSettings keeps as a stream. It reads them back with QVariant's own operator,
// which takes any type and reserves room for whatever count it is told: a few wrong bytes in the
// file would end the program at every start.
#pragma once

#include <QByteArray>

namespace ze::qt {

/// True if the text of a settings file holds a stream of a type that is not known to be harmless,
/// or hides one behind escapes. A plain text that reads like the beginning of one counts, too.
[[nodiscard]] bool has_unsafe_variant(const QByteArray& file);

}  // namespace ze::qt
