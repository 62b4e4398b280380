#pragma once

#include "app/base/MainView.h"

#include <QToolBar>

#include <map>

class QLabel;
class QToolButton;
class QVBoxLayout;

/// The bar at the top of the window with what went wrong and isn't settled: a line for each matter,
/// which can be closed. Hidden while there is none, so that it never stands in the way of a flight.
class NoticeBar : public QToolBar
{
    Q_OBJECT
public:
    explicit NoticeBar(QWidget* parent = nullptr);

    void showNotice(Notice about, const QString& text);
    void clearNotice(Notice about);
    void retranslateUi();
    /// Shows itself if a line stands, after a saved state of the window has said otherwise.
    void showIfNeeded();

Q_SIGNALS:
    /// The pilot wants the failed download to be tried again.
    void sigDownloadAgain();

private:
    struct Row
    {
        QWidget* line = nullptr;
        QLabel* label = nullptr;
        QToolButton* again = nullptr; ///< download only
        QToolButton* close = nullptr;
    };
    Row& rowOf(Notice about);

    QVBoxLayout* m_lines = nullptr;
    std::map<Notice, Row> m_rows;
};
