#pragma once

#include "app/base/Settings.h"
#include "tests/support/FakeRandom.h"
#include "tests/support/Text.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QVariant>

#include <gtest/gtest.h>

#include <map>
#include <string>

enum OptionClasses
{
    Main = 1,
    Profile = 2
};

/// The options of some classes by their keys, as text.
inline std::map<std::string, QByteArray> optionsOf(const Settings& settings,
                                                   int classes = Main | Profile)
{
    std::map<std::string, QByteArray> values;
    const auto put = [&values, classes](int optionClass, const char* key, const QVariant& value) {
        if ((classes & optionClass) != 0) {
            values[key] = value.toByteArray();
        }
    };
#define CIRRILON_ROW(type, getter, Setter, key, value, optionClass)                                \
    put(optionClass, key, settings.getter());
    CIRRILON_OPTIONS(CIRRILON_ROW)
#undef CIRRILON_ROW
    return values;
}

/// A temporary folder that is the user's home as well, so documents lie in it.
class SettingsFixture : public ::testing::Test
{
public:
    static QByteArray read(const QString& file)
    {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("(missing)");
    }

protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_folder.isValid());
        m_home = qgetenv("HOME");
        m_config = qgetenv("XDG_CONFIG_HOME");
        qputenv("HOME", QFile::encodeName(m_folder.path()));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder.path()));
    }
    void TearDown() override
    {
        qputenv("HOME", m_home);
        qputenv("XDG_CONFIG_HOME", m_config);
    }

    QString path(const char* name) const { return m_folder.filePath(QString::fromUtf8(name)); }
    QString mainFile() const { return path("cirrilon.ini"); }

    static void write(const QString& file, const QByteArray& bytes)
    {
        QDir().mkpath(QFileInfo(file).path());
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly)) << file.toStdString();
        ASSERT_EQ(out.write(bytes), bytes.size());
    }
    FakeRandom m_random;

private:
    QTemporaryDir m_folder;
    QByteArray m_home;
    QByteArray m_config;
};
