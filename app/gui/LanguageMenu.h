#pragma once

#include <QObject>
#include <QString>
#include <QTranslator>

class QAction;
class QActionGroup;
class QMenu;

/// The languages beside the program, one action each, and the two translators that the choice
/// loads. Main thread.
class LanguageMenu : public QObject
{
    Q_OBJECT
public:
    /// Fills `menu` from the files "cirrilonv3_*.qm" in `folder`.
    LanguageMenu(QMenu& menu, const QString& folder);
    ~LanguageMenu() override;

    /// Checks and loads the language of the system.
    void useSystemLocale();
    /// "de" of "de_DE".
    static QString shortName(const QString& localeName);
    /// The folder "languages" under the application's folder.
    static QString defaultFolder();

public Q_SLOTS:
    void OnLanguageChanged(QAction* action);

Q_SIGNALS:
    void sigDebugString(QString text, int level);

private:
    void addLanguage(QMenu& menu, const QString& fileName);
    void check(const QString& locale);
    void loadLanguage(const QString& locale);
    static void replace(QTranslator& translator, const QString& file);

    QString m_folder;
    QActionGroup* m_group;
    QTranslator m_application;
    QTranslator m_qt;
    QString m_current;
};
