// The values that QSettings keeps as a stream. It reads them back with QVariant's own operator,
// which takes any type and reserves room for whatever count it is told: a few wrong bytes in the
// file would end the program at every start.
#pragma once

#include <QByteArray>

namespace ze::qt {

/// The text of a settings file without the lines that hold a stream which cannot be read back
/// safely: one that is broken or of a type that is not known to be harmless. Of a file in which a
/// value may reach over its line, nothing is left when it could hold a stream at all.
[[nodiscard]] QByteArray without_unsafe_variants(const QByteArray& file);

}  // namespace ze::qt
