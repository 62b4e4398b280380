#pragma once

#include <QDockWidget>
#include <QString>
#include <QStringList>
#include <QTimer>

class QTextBrowser;
class QUrl;

/// The log as the pilot sees it: rich text, newest line at the end. Links open local folders that
/// exist, nothing else. Lines wait in a list and come into the view a few at a time, since the view
/// takes milliseconds to lay out a long one and hundreds come at once. Main thread.
class DockWidgetDebug : public QDockWidget
{
    Q_OBJECT
public:
    explicit DockWidgetDebug(QWidget* parent = nullptr);

    /// Adds a line, coloured by its level; the view shows it soon and scrolls to its end.
    void append(const QString& item, int level);
    /// Brings all lines that wait into the view at once, however long that takes.
    void flush();
    void clear();

Q_SIGNALS:
    void sigOpenFolder(QString path);

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslateUi();
    void showSome();
    void showLines(int count);
    void dropOldBlocks();
    void showContextMenu(const QPoint& position);
    void openLink(const QUrl& link);

    QTextBrowser* m_view;
    QTimer m_timer{this};
    QStringList m_lines; ///< the last thousand, and all that wait
    int m_waiting = 0;   ///< lines at the end of the list that the view hasn't got
};
