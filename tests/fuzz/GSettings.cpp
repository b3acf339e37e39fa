// The input is the settings file that a start finds, and then a text that is stored and found
// again.

#include "ze/tools/GSettings.h"

#include "ze/store/GNode.h"

#include "support/check.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdint>

namespace {

class Store : public ze::qt::GSettings {
public:
    using GSettings::GSettings;
};

/// Names a file that no start has seen: QSettings reads one again only when its size or time is
/// another.
class Place {
public:
    Place() {
        static const QTemporaryDir folder((QFile::exists(QStringLiteral("/dev/shm"))
                                               ? QStringLiteral("/dev/shm")
                                               : QDir::tempPath()) +
                                          QStringLiteral("/fuzz-XXXXXX"));
        static unsigned number = 0;
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
        QCoreApplication::setOrganizationName(QStringLiteral("fuzz"));
        QCoreApplication::setApplicationName(QString::number(++number));
        name = QSettings().fileName();
        QDir().mkpath(QFileInfo(name).path());
    }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    ~Place() {
        QFile::remove(name);
        QFile::remove(unreadable());
    }

    [[nodiscard]] QString unreadable() const { return name + QStringLiteral(".unreadable"); }

    QString name;
};

void read_as_everything(const Store& store, const QString& key) {
    static_cast<void>(store.value(key).toString());
    static_cast<void>(store.get_uint(key, 0, nullptr));
    static_cast<void>(store.get_int(key, 0, nullptr));
    static_cast<void>(store.get_double(key, 0, nullptr));
    static_cast<void>(store.get_color(key, QColor(), nullptr));
    static_cast<void>(store.get_rect(key, QRect()));
    static_cast<void>(store.get_node(key));
}

void start_with(const QByteArray& content) {
    const Place place;
    {
        QFile file(place.name);
        FUZZ_CHECK(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    Store store;
    for (const QString& key : store.allKeys()) {
        read_as_everything(store, key);
    }
    QFile kept(place.unreadable());
    FUZZ_CHECK(!kept.exists() || (kept.open(QIODevice::ReadOnly) && kept.readAll() == content));
}

void store_and_find(const QByteArray& bytes) {
    const Place place;
    const QString text = QString::fromUtf8(bytes);
    if (text.contains(QChar::ByteOrderMark)) {
        return;  // Qt's decoder may drop the mark: a line with one and a stream's name is not kept
    }
    const QVariantMap map{{QStringLiteral("text"), text}, {QStringLiteral("bytes"), bytes}};
    const QList<QVariant> values = {text, QStringList{text, text}, bytes, map};
    {
        Store store;
        for (qsizetype i = 0; i < values.size(); ++i) {
            store.set(QString::number(i), values.at(i), nullptr);
        }
    }
    const Store store;
    FUZZ_CHECK(!QFile::exists(place.unreadable()));
    for (qsizetype i = 0; i < values.size(); ++i) {
        FUZZ_CHECK(store.value(QString::number(i)) == values.at(i));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    start_with(bytes);
    store_and_find(bytes);
    return 0;
}
