#include "app/gui/LanguageMenu.h"

#include "app/base/LogLevel.h"

#include <QAction>
#include <QActionGroup>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QMenu>

LanguageMenu::LanguageMenu(QMenu& menu, const QString& folder)
    : QObject(&menu)
    , m_folder(folder)
    , m_group(new QActionGroup(this))
{
    m_group->setExclusive(true);
    connect(m_group, &QActionGroup::triggered, this, &LanguageMenu::OnLanguageChanged);
    const QStringList files =
        QDir(folder).entryList({QStringLiteral("cirrilonv3_*.qm")}, QDir::Files, QDir::Name);
    for (const QString& file : files) {
        addLanguage(menu, file);
    }
    menu.setEnabled(!files.isEmpty());
}

LanguageMenu::~LanguageMenu() = default;

void LanguageMenu::addLanguage(QMenu& menu, const QString& fileName)
{
    const int begin = fileName.indexOf(QLatin1Char('_')) + 1;
    const QString locale = fileName.mid(begin, fileName.indexOf(QLatin1Char('.'), begin) - begin);
    auto* action = new QAction(QLocale::languageToString(QLocale(locale).language()), m_group);
    action->setIcon(QIcon(QStringLiteral("%1/%2.png").arg(m_folder, locale)));
    action->setCheckable(true);
    action->setData(locale);
    menu.addAction(action);
}

QString LanguageMenu::shortName(const QString& localeName)
{
    const int end = localeName.lastIndexOf(QLatin1Char('_'));
    return localeName.left(end); // all of it without such a mark
}

QString LanguageMenu::defaultFolder()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/languages");
}

void LanguageMenu::useSystemLocale()
{
    const QLocale system = QLocale::system();
    // The C locale has no language of its own; the texts of the source are English.
    const QString locale = shortName(system.name());
    // The texts of the source are English; so is what has no translation.
    const bool translated =
        QFile::exists(QStringLiteral("%1/cirrilonv3_%2.qm").arg(m_folder, locale));
    const QString shown = translated ? locale : QStringLiteral("en");
    check(shown);
    loadLanguage(shown);
}

void LanguageMenu::check(const QString& locale)
{
    const QList<QAction*> actions = m_group->actions();
    for (QAction* action : actions) {
        action->setChecked(action->data().toString() == locale);
    }
}

void LanguageMenu::OnLanguageChanged(QAction* action)
{
    if (action != nullptr) {
        loadLanguage(action->data().toString());
    }
}

void LanguageMenu::loadLanguage(const QString& locale)
{
    if (locale == m_current) {
        return;
    }
    m_current = locale;
    QLocale::setDefault(QLocale(locale));
    replace(m_application, QStringLiteral("%1/cirrilonv3_%2.qm").arg(m_folder, locale));
    // The build puts Qt's own texts beside ours; a program without them asks Qt's installation.
    const QString bundled = QStringLiteral("%1/qt_%2.qm").arg(m_folder, locale);
    const QString qtFolder = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
    replace(m_qt,
            QFile::exists(bundled) ? bundled : QStringLiteral("%1/qt_%2.qm").arg(qtFolder, locale));
    const QString name = QLocale::languageToString(QLocale(locale).language());
    Q_EMIT sigDebugString(QStringLiteral("Current Language changed to %1").arg(name),
                          loglevel::kNotification);
}

void LanguageMenu::replace(QTranslator& translator, const QString& file)
{
    QCoreApplication::removeTranslator(&translator);
    if (translator.load(file)) {
        QCoreApplication::installTranslator(&translator);
    }
}
