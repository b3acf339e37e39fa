#include "ze/qt/resources.h"

#include "ze/log/pp.h"
#include "ze/tools/format.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QHash>
#include <QImageReader>

namespace ze::qt {

namespace {

QString& res_prefix() {
    static QString prefix;
    return prefix;
}

QHash<QString, QIcon>& known_icons() {
    static QHash<QString, QIcon> icons;
    return icons;
}

bool can_read_svg() {
    QByteArray picture("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"1\" height=\"1\"/>");
    QBuffer buffer(&picture);
    buffer.open(QIODevice::ReadOnly);
    return QImageReader(&buffer, "svg").canRead();
}

}  // namespace

void set_res_prefix(const QString& prefix) {
    res_prefix() = prefix;
}

QString get_res_prefix() {
    return res_prefix();
}

bool has_res_prefix() {
    return !res_prefix().isEmpty();
}

QString get_res_path(const QString& path) {
    if (path.startsWith(u'^')) {
        return ze::str::qprintF("$/$", res_prefix(), path.mid(1));
    }
    ze::pp_warn("get_res_path <<<$>>>", path);
    return path;
}

bool match_end_of_prefix(const QString& text) {
    return !text.isEmpty() && has_res_prefix() && res_prefix().endsWith(text);
}

bool does_res_exist(const QString& path) {
    const bool exists = QFile::exists(path);
    if (!exists) {
        ze::pp("resource does not exist: $", path);
    }
    return exists;
}

QIcon get_icon(const QString& path) {
    if (!path.startsWith(QLatin1String(":/"))) {
        return QIcon(path);
    }
    auto& icons = known_icons();
    if (icons.isEmpty()) {
        // Pictures must be gone before the application object is.
        qAddPostRoutine([] { known_icons().clear(); });
    }
    auto icon = icons.find(path);
    if (icon == icons.end()) {
        icon = icons.insert(path, QIcon(path));
    }
    return *icon;
}

bool check_svg_support() {
    static const bool supported = [] {
        const bool readable = can_read_svg();
        if (!readable) {
            ze::pp_warn("check_svg_support, Qt's SVG plug-in is missing: icons stay blank");
        }
        return readable;
    }();
    return supported;
}

}  // namespace ze::qt
