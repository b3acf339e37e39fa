// Paths of the embedded resources. A path that begins with "^" lies under the program's resource
// prefix; the themes' icon folders are ze/qt/themes.h.
#pragma once

#include <QIcon>
#include <QString>

namespace ze::qt {

/// Sets what takes the place of the caret, such as ":/wb/shared-res"; without a slash at the end.
void set_res_prefix(const QString& prefix);
[[nodiscard]] QString get_res_prefix();
[[nodiscard]] bool has_res_prefix();

/// "^icons/copy.svg" gives the prefix, a slash and the rest. Any other path is returned as it is,
/// with a warning in the log.
[[nodiscard]] QString get_res_path(const QString& path);

/// Whether the prefix ends with the text; false when either is empty.
[[nodiscard]] bool match_end_of_prefix(const QString& text);

/// Whether there is such a file, embedded or on disk. A missing one leaves a line in the log.
[[nodiscard]] bool does_res_exist(const QString& path);

/// The icon of a file. Of an embedded one all get the same icon, whose picture is parsed once. A
/// missing file gives an icon that draws nothing.
[[nodiscard]] QIcon get_icon(const QString& path);

/// Whether SVG icons can be drawn. Where the plug-in is missing Qt makes icons that are not null
/// and draw nothing, in silence; the first call then leaves one line in the log.
bool check_svg_support();

}  // namespace ze::qt
