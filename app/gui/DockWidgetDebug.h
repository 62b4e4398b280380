#pragma once

#include <QDockWidget>
#include <QString>
#include <QStringList>

class QTextBrowser;
class QUrl;

/// The log as the pilot sees it: rich text, newest line at the end. Links open local folders that
/// exist, nothing else. Main thread.
class DockWidgetDebug : public QDockWidget
{
    Q_OBJECT
public:
    explicit DockWidgetDebug(QWidget* parent = nullptr);

    /// Adds a line, coloured by its level, and scrolls to the end.
    void append(const QString& item, int level);
    void clear();
    /// The last thousand lines in the form that the view got.
    const QStringList& lines() const { return m_lines; }

Q_SIGNALS:
    void sigOpenFolder(QString path);

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslateUi();
    void dropOldBlocks();
    void showContextMenu(const QPoint& position);
    void openLink(const QUrl& link);

    QTextBrowser* m_view;
    QStringList m_lines;
};
