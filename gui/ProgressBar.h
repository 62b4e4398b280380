#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QProgressBar;

/// The contents of the status bar: what is going on, how far it is, and the version.
class ProgressBar : public QWidget
{
    Q_OBJECT
public:
    explicit ProgressBar(QWidget* parent = nullptr);

    void setStatusText(const QString& text);
    /// Stands in red in the place of the status text until it is empty.
    void setAlarm(const QString& text);
    void setVersionText(const QString& text);
    /// 0 of 0 with an empty text hides the bar; with a text it is busy. Totals beyond 32 bits keep
    /// their proportion.
    void setProgress(qlonglong value, qlonglong total, const QString& text);

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslateUi();
    void showStatus();
    void setRangeAndValue(qlonglong value, qlonglong total);
    void setFormat(const QString& text);

    QLabel* m_status;
    QProgressBar* m_bar;
    QLabel* m_version;
    QString m_statusText; ///< kept while an alarm stands in its place
    QString m_alarm;
};
