#pragma once

#include <QDockWidget>
#include <QString>
#include <QTimer>

#include <cstddef>
#include <deque>

class DebugBar;
class QTextBrowser;
class QUrl;

/// The log as the pilot sees it: rich text, newest line at the end, with a row for finding, copying
/// and the level from which lines are shown. Links open local folders that exist, nothing else.
/// Lines wait in a list and come into the view a few at a time, since the view takes milliseconds
/// to lay out a long one and hundreds come at once. Main thread.
class DockWidgetDebug : public QDockWidget
{
    Q_OBJECT
public:
    explicit DockWidgetDebug(QWidget* parent = nullptr);

    /// Adds a line, coloured by its level; the view shows it soon. It follows with its end unless
    /// the pilot has scrolled away from there.
    void append(const QString& item, int level);
    /// Brings all lines that wait into the view at once, however long that takes.
    void flush();
    void clear();
    /// Shows the lines of this level and above, also of those that came before.
    void setLevel(int level);

Q_SIGNALS:
    void sigOpenFolder(QString path);
    /// The pilot wants a report for support.
    void sigReport();

protected:
    void changeEvent(QEvent* event) override;

private:
    struct Line
    {
        QString text; ///< with the marks of its level
        int level = 0;
    };

    void buildBar();
    void retranslateUi();
    const Line& nextWaiting() const { return m_lines[m_lines.size() - m_waiting]; }
    void showSome();
    void showLine(const Line& line);
    void showAtOnce(int mostCost);
    void dropOldBlocks();
    void find(const QString& text, bool backwards);
    void copy();
    void showContextMenu(const QPoint& position);
    void openLink(const QUrl& link);

    DebugBar* m_bar;
    QTextBrowser* m_view;
    QTimer m_timer{this};
    std::deque<Line> m_lines; ///< as many as the view can have, so that a level can be chosen later
    std::size_t m_waiting = 0; ///< lines at the end of the list that the view hasn't got
    int m_level = 0;           ///< lines below it aren't shown
    bool m_follows = true;     ///< the view stands at its end
};
