#pragma once

#include <QString>
#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QToolButton;

/// The row above the log: from which level lines are shown, looking for a text, copying, saving a
/// report. It holds no lines itself. Main thread.
class DebugBar : public QWidget
{
    Q_OBJECT
public:
    explicit DebugBar(QWidget* parent = nullptr);

    /// Says beside the line whether the text was found; nothing for an empty one.
    void showFound(bool found);
    void focusFind();
    void retranslateUi();

Q_SIGNALS:
    /// Lines below this level aren't wanted; of loglevel.
    void sigLevel(int level);
    void sigFind(QString text, bool backwards);
    void sigCopy();
    void sigReport();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build();
    QToolButton* addButton(int icon, const char* name);
    void find(bool backwards);

    QComboBox* m_level;
    QLineEdit* m_find;
    QLabel* m_result;
    QToolButton* m_previous = nullptr;
    QToolButton* m_next = nullptr;
    QToolButton* m_copy = nullptr;
    QToolButton* m_report = nullptr;
};
