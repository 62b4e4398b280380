#include "app/gui/WidgetMetarUndock.h"

#include "app/gui/MetarRow.h"
#include "gui/Icons.h"
#include "gui/TextFonts.h"

#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

constexpr int kWidthInCharacters = 56;
constexpr int kHeightInLines = 18;

QLabel* plainLabel(QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

} // namespace

WidgetMetarUndock::WidgetMetarUndock(const aviation::weather::Metar& metar, QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::WindowStaysOnTopHint)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(Icons::appIcon(Icons::Name::Application));
    auto* contents = new QWidget(this);
    m_raw = plainLabel(contents);
    m_raw->setFont(textfonts::bold(textfonts::fixed()));
    m_raw->setAccessibleName(tr("Report"));
    m_decoded = plainLabel(contents);
    m_decoded->setAccessibleName(tr("Decoded report"));
    auto* line = new QFrame(contents);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);

    auto* column = new QVBoxLayout(contents);
    column->addWidget(m_raw);
    column->addWidget(line);
    column->addWidget(m_decoded);
    column->addStretch();
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidget(contents);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(scroll);
    resize(fontMetrics().averageCharWidth() * kWidthInCharacters,
           fontMetrics().height() * kHeightInLines);
    setMetar(metar);
}

void WidgetMetarUndock::setMetar(const aviation::weather::Metar& metar)
{
    const MetarRow row = makeMetarRow(metar);
    m_icao = row.icao;
    setWindowTitle(m_icao.trimmed());
    m_raw->setText(row.text);
    m_decoded->setText(row.decoded);
}

void WidgetMetarUndock::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}
