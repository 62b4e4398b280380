#include "app/gui/SettingsSaver.h"

#include "app/base/MainView.h"
#include "app/base/Settings.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

SettingsSaver::SettingsSaver(Settings& settings, QString file, MainView& view)
    : m_settings(settings)
    , m_file(std::move(file))
    , m_view(view)
{}

bool SettingsSaver::save()
{
    const bool profileSaved = m_settings.save(m_settings.profileFile(m_settings.profile()));
    const bool saved = m_settings.save(m_file) && profileSaved;
    if (!saved) {
        m_view.showNotice(Notice::Settings, failureText());
    } else if (m_failed) {
        m_view.clearNotice(Notice::Settings);
    }
    m_failed = !saved;
    return saved;
}

void SettingsSaver::replaceDamaged()
{
    const QStringList files = m_settings.takeDamagedFiles();
    if (files.isEmpty()) {
        return;
    }
    const bool saved = save();
    QStringList texts;
    for (const QString& path : files) {
        const QString file = QDir::toNativeSeparators(path);
        texts << (saved ? tr("The settings in %1 can't be understood. The program goes on with its "
                             "defaults; the file is kept as %2.")
                              .arg(file, QFileInfo(Settings::damagedName(file)).fileName())
                        : tr("The settings in %1 can't be understood. The program goes on with its "
                             "defaults; the file can't be put aside, so changes aren't saved.")
                              .arg(file));
    }
    m_view.showNotice(Notice::Settings, texts.join(QLatin1Char(' ')));
}

QString SettingsSaver::failureText() const
{
    const QString folder = QFileInfo(QFileInfo(m_file).absoluteFilePath()).absolutePath();
    return tr("The settings can't be saved in %1. Look whether the folder may be written and the "
              "disk has room.")
        .arg(QDir::toNativeSeparators(folder));
}
