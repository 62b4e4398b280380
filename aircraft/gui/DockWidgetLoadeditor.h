#pragma once

#include <QDockWidget>

class QLabel;

/// The dock of the load editor. It has its place in the window and says that its contents come
/// later.
class DockWidgetLoadeditor : public QDockWidget
{
    Q_OBJECT
public:
    explicit DockWidgetLoadeditor(QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslateUi();

    QLabel* m_text;
};
