#pragma once

#include <QDockWidget>

class QLabel;

/// The flight planner's window. It has its place in the window and says that its contents come
/// later.
class MainWidgetFlightplanner : public QDockWidget
{
    Q_OBJECT
public:
    explicit MainWidgetFlightplanner(QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslateUi();

    QLabel* m_text;
};
