// A settings store of its own for each test, in the home folder of the test program.
#pragma once

#include "ze/tools/GSettings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace test {

/// GSettings apart from the program's one object.
class SettingsStore : public ze::qt::GSettings {
public:
    using GSettings::GSettings;
};

/// Names the store after the running test, so that each test starts without a file.
class SettingsFixture : public testing::Test {
protected:
    SettingsFixture() {
        const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
        QCoreApplication::setOrganizationName(QLatin1String(test->test_suite_name()));
        QCoreApplication::setApplicationName(QLatin1String(test->name()));
        file_path() = QSettings(QSettings::NativeFormat, QSettings::UserScope,
                                QLatin1String(test->test_suite_name()), QLatin1String(test->name()))
                          .fileName();
    }

    [[nodiscard]] static QString path() { return file_path(); }

    static void write_file(const QByteArray& content, QFile::Permissions permissions) {
        QDir().mkpath(QFileInfo(path()).path());
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        ASSERT_TRUE(file.setPermissions(permissions));
    }

    [[nodiscard]] static QByteArray read_file(const QString& name = path()) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    // Asked for once: a second QSettings on the file would write the changes of the first.
    static QString& file_path() {
        static QString name;
        return name;
    }
};

}  // namespace test
