// Reading a QVariant that somebody else may have written. QVariant's own stream operator builds
// whatever type the stream names, reserves whatever count it states and follows lists inside lists
// without end.
#pragma once

#include <QVariant>

class QDataStream;

namespace ze::store {

/// How deep nodes in nodes, and lists in lists, may stand in a stream; each level costs stack.
inline constexpr int MAX_STREAM_DEPTH = 256;

/// Reads what `stream << QVariant` wrote, in the stream's version: that of the linked Qt, or
/// Qt_4_0. A type that is not on the list, or a nesting too deep, sets the stream's status to
/// ReadCorruptData.
[[nodiscard]] QVariant read_value(QDataStream& stream);

}  // namespace ze::store
