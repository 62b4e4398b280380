#include "aircraft/gui/DockWidgetLoadeditor.h"

#include <QEvent>
#include <QLabel>

DockWidgetLoadeditor::DockWidgetLoadeditor(QWidget* parent)
    : QDockWidget(parent)
    , m_text(new QLabel(this))
{
    setObjectName(QStringLiteral("DockLoadeditor"));
    m_text->setAlignment(Qt::AlignCenter);
    m_text->setWordWrap(true);
    m_text->setMargin(fontMetrics().height());
    setWidget(m_text);
    retranslateUi();
}

void DockWidgetLoadeditor::changeEvent(QEvent* event)
{
    QDockWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retranslateUi();
    }
}

void DockWidgetLoadeditor::retranslateUi()
{
    setWindowTitle(tr("Load editor"));
    m_text->setText(tr("The load editor comes with a later version."));
}
