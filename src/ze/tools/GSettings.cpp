#include "ze/tools/GSettings.h"

#include "ze/log/exits.h"
#include "ze/log/pp.h"
#include "ze/store/GNode.h"

#include "stored_variants.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>
#include <QTimer>

#include <iostream>

namespace ze::qt {

namespace {

// Windows keeps the settings in the registry and macOS in its own store; both are the user's alone.
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
constexpr bool IS_PLAIN_FILE = true;
#else
constexpr bool IS_PLAIN_FILE = false;
#endif

constexpr QFile::Permissions OWNER_MAY = QFile::ReadOwner | QFile::WriteOwner;
constexpr QFile::Permissions OTHERS_MAY = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                          QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;

// An owner who made the file read-only keeps it so.
void restrict_to_owner(QFile& file) {
    const QFile::Permissions permissions = file.permissions();
    if ((permissions & OTHERS_MAY) != 0) {
        file.setPermissions(permissions & OWNER_MAY);
    }
}

// QSettings does not see that its last buffer did not fit on the disk: it puts the cut file in the
// place of the whole one and reports success. So the room is asked for before it writes. Where not
// even a temporary file can be made, QSettings cannot write either and says so.
bool has_room(const QString& name) {
    constexpr qint64 GROWTH = qint64{64} * 1024;  // more than one write adds to the settings
    const QFileInfo file(name);
    QTemporaryFile probe(file.path() + QStringLiteral("/XXXXXX"));
    if (!probe.open()) {
        return true;
    }
    const QByteArray content(file.size() + GROWTH, '\0');
    return probe.write(content) == content.size() && probe.flush();
}

QString place_of_unreadable(const QString& name) {
    return name + QStringLiteral(".unreadable");
}

/// The place of the copy, free of an older one.
QString free_place_of_unreadable(const QString& name) {
    QString place = place_of_unreadable(name);
    QFile::remove(place);
    return place;
}

/// Puts the content in the place of the file and leaves a copy of it as it was. Where there is no
/// room for both, the file itself becomes the copy.
bool keep_and_replace(const QString& name, const QByteArray& content) {
    QSaveFile file(name);
    const bool isReplaced = file.open(QIODevice::WriteOnly) && file.write(content) >= 0 &&
                            file.flush() && QFile::copy(name, free_place_of_unreadable(name)) &&
                            file.commit();
    return isReplaced || QFile::rename(name, free_place_of_unreadable(name));
}

}  // namespace

bool GSettings::flagDebug = false;

GSettings& GSettings::instance() {
    // Never destroyed: QSettings would write unasked then. What is unwritten is written at the end.
    static GSettings* const settings = new GSettings;
    static const struct LastWrite {
        ~LastWrite() { settings->sync(); }
    } last_write;
    return *settings;
}

GSettings::GSettings() : GSettings(find_place()) {}

GSettings::GSettings(const Place& place)
    : QSettings(place.name, QSettings::NativeFormat), isKept(place.isKept) {
    make_file_private();
    look_for_damage();
}

// QSettings reads a value when its section is first asked for, so that it is too late to look for
// harm once it has the file.
GSettings::Place GSettings::find_place() {
    const QString name = QSettings().fileName();
    QFile file(name);
    if (!IS_PLAIN_FILE || !file.open(QIODevice::ReadOnly)) {
        return {name};
    }
    const QByteArray content = file.readAll();
    const QByteArray harmless = without_unsafe_variants(content);
    if (harmless.size() == content.size()) {
        return {name};
    }
    restrict_to_owner(file);
    if (keep_and_replace(name, harmless)) {
        return {name, true};
    }
    // Nothing can be written here. There is no file below a file: such a name starts an empty
    // store.
    return {name + QStringLiteral("/none"), true};
}

GSettings::~GSettings() {
    make_file_private();
}

bool GSettings::prepare_write() {
    make_file_private();
    return !IS_PLAIN_FILE || has_room(fileName());
}

// QSettings writes a new file beside the old one, with the permissions of the old one, and renames
// it. A first file it would make with those of the umask and restrict only when it is full.
void GSettings::make_file_private() {
    QFile file(fileName());
    if (!IS_PLAIN_FILE) {
        return;
    }
    if (file.exists()) {
        restrict_to_owner(file);
    } else if (!allKeys().isEmpty() && QDir().mkpath(QFileInfo(file).path())) {
        file.open(QIODevice::WriteOnly | QIODevice::NewOnly, OWNER_MAY);
    }
}

bool GSettings::event(QEvent* event) {
    constexpr int WRITE_AGAIN = 1000;  // milliseconds
    if (event->type() == QEvent::UpdateRequest && !prepare_write()) {
        // QSettings asks for no other update before it has written.
        QTimer::singleShot(WRITE_AGAIN, this, [this] {
            QEvent request(QEvent::UpdateRequest);
            QCoreApplication::sendEvent(this, &request);
        });
        return true;
    }
    return QSettings::event(event);
}

void GSettings::sync() {
    if (prepare_write()) {
        QSettings::sync();
    }
}

void GSettings::clear_config() {
    pp("GSettings::clear_config");
    clear();
    sync();
    pp("GSettings::~clear_config");
}

void GSettings::look_for_damage() {
    QFile file(fileName());
    if (!IS_PLAIN_FILE || !file.open(QIODevice::ReadOnly)) {
        return;
    }
    const bool isCut = file.size() > 0 && file.seek(file.size() - 1) && file.read(1) != "\n";
    (void)allKeys();  // reads all sections, and tells in the status what it could not read
    if (isCut || status() != NoError) {
        keep_unreadable_file();
    }
}

void GSettings::remove_unreadable_file() {
    QFile::remove(place_of_unreadable(fileName()));
}

void GSettings::keep_unreadable_file() const {
    if (IS_PLAIN_FILE && !isKept) {
        isKept = QFile::copy(fileName(), free_place_of_unreadable(fileName()));
    }
}

bool GSettings::check_update_config(unsigned minimum, bool clearIfOlder) {
    versionMinimum = minimum;
    versionCurrent = get_config_version();
    if (versionCurrent >= versionMinimum) {
        return false;
    }
    std::cout << "GSettings::check_update_config, current version:" << versionCurrent
              << ", version expected:" << versionMinimum << ' ' << str::to_utf8(fileName()) << '\n';
    if (clearIfOlder) {
        pp("GSettings::check_update_config - CLEAR");
        // Every store of this program has a version; one that has keys but no version was damaged.
        if (!allKeys().isEmpty() && !has_config_version()) {
            keep_unreadable_file();
        }
        clear_config();
    }
    set_config_version(versionMinimum);
    return true;
}

void GSettings::save_splitter_state(QSplitter* splitter) {
    if (splitter == nullptr) {
        nullPointerHandling("src/ze/tools/GSettings", __LINE__, QStringLiteral("splitter == NULL"));
    }
}

void GSettings::restore_splitter_state(QSplitter* splitter) {
    if (splitter == nullptr) {
        nullPointerHandling("src/ze/tools/GSettings", __LINE__, QStringLiteral("splitter == NULL"));
    }
}

}  // namespace ze::qt
