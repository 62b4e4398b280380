#include "planner/gui/MainWidgetFlightplanner.h"

#include <QEvent>
#include <QLabel>

MainWidgetFlightplanner::MainWidgetFlightplanner(QWidget* parent)
    : QDockWidget(parent)
    , m_text(new QLabel(this))
{
    setObjectName(QStringLiteral("DockFlightplanner"));
    m_text->setAlignment(Qt::AlignCenter);
    m_text->setWordWrap(true);
    m_text->setMargin(fontMetrics().height());
    setWidget(m_text);
    retranslateUi();
}

void MainWidgetFlightplanner::changeEvent(QEvent* event)
{
    QDockWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retranslateUi();
    }
}

void MainWidgetFlightplanner::retranslateUi()
{
    setWindowTitle(tr("Flightplanner"));
    m_text->setText(tr("The flight planner comes with a later version."));
}
