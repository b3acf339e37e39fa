// The settings file of a test, in the home folder of the test program.
#pragma once

#include "ze/tools/SettingsStore.h"

#include <csignal>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace test {

inline const QString KEY = QStringLiteral("key");
inline const QByteArray WITH_KEY = "[General]\nkey=1\n";
inline const QByteArray VERSION = "[config]\nversion=110\n\n";
inline constexpr QFile::Permissions EVERYBODY =
    QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;

/// A file that cannot be read as it stands, and what is wrong with it.
struct Broken {
    const char* name;
    QByteArray content;
};

class GSettingsFileTest : public test::SettingsFixture {
protected:
    GSettingsFileTest() { umask(0); }  // the worst that a user can have
    ~GSettingsFileTest() override { umask(umaskBefore); }

    static unsigned mode(const QString& name = path()) {
        struct stat info {};
        return stat(name.toLocal8Bit().constData(), &info) == 0 ? info.st_mode & 0777u : 0;
    }

    static QString kept_path() { return path() + QStringLiteral(".unreadable"); }

private:
    const mode_t umaskBefore = umask(022);
};

/// A disk on which no file gets longer than these bytes.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit full{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }

private:
    rlimit before{};
    void (*const handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

}  // namespace test
