#include "gui/ProgressBar.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QStyle>

#include <limits>

namespace {

constexpr qlonglong kMostOfBar = std::numeric_limits<int>::max();
/// What the bar shows most of the time, at its longest.
constexpr const char* kUsualText = "  Weather update in 3600s/100NM  ";

/// A red that is readable on the ground of the palette.
QColor alarmColour(const QPalette& palette)
{
    const bool dark = palette.color(QPalette::Window).lightness()
                      < palette.color(QPalette::WindowText).lightness();
    return dark ? QColor(0xff, 0x8a, 0x80) : QColor(0xb0, 0x00, 0x20);
}

/// Shortens its text to its width with dots; the tool tip has all of it.
class ShortenedLabel : public QLabel
{
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
        style()->drawItemText(&painter, rect(), Qt::AlignLeft | Qt::AlignVCenter, palette(),
                              isEnabled(), shown, foregroundRole());
    }
};

} // namespace

ProgressBar::ProgressBar(QWidget* parent)
    : QWidget(parent)
    , m_status(new ShortenedLabel(this))
    , m_bar(new QProgressBar(this))
    , m_version(new QLabel(this))
{
    m_status->setObjectName(QStringLiteral("label_status"));
    m_status->setTextFormat(Qt::PlainText);
    m_status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_bar->setObjectName(QStringLiteral("progressBar"));
    m_bar->setTextVisible(true);
    m_bar->setFixedWidth(fontMetrics().horizontalAdvance(QString::fromLatin1(kUsualText)));
    m_bar->hide();
    m_version->setObjectName(QStringLiteral("label_version"));
    m_version->setTextFormat(Qt::PlainText);

    auto* row = new QHBoxLayout(this);
    const int gap = fontMetrics().averageCharWidth();
    row->setContentsMargins(gap, 0, gap, 0);
    row->setSpacing(2 * gap);
    row->addWidget(m_status, 1);
    row->addWidget(m_bar);
    row->addWidget(m_version);
    retranslateUi();
}

void ProgressBar::setStatusText(const QString& text)
{
    m_statusText = text;
    showStatus();
}

void ProgressBar::setAlarm(const QString& text)
{
    m_alarm = text;
    showStatus();
}

void ProgressBar::showStatus()
{
    const bool alarmed = !m_alarm.isEmpty();
    const QString& text = alarmed ? m_alarm : m_statusText;
    m_status->setText(text);
    m_status->setToolTip(text.toHtmlEscaped());
    QPalette colours; // an empty one takes all from the parent
    if (alarmed) {
        colours.setColor(QPalette::WindowText, alarmColour(palette()));
    }
    m_status->setPalette(colours);
}

void ProgressBar::setVersionText(const QString& text)
{
    m_version->setText(text);
}

void ProgressBar::setProgress(qlonglong value, qlonglong total, const QString& text)
{
    const bool nothing = value == 0 && total == 0;
    if (nothing && text.isEmpty()) {
        m_bar->hide();
        return;
    }
    if (m_bar->isHidden() || !text.isEmpty()) {
        setFormat(text);
    }
    m_bar->show();
    setRangeAndValue(value, total);
}

void ProgressBar::setFormat(const QString& text)
{
    // The bar would replace %p, %v and %m.
    QString format = text;
    m_bar->setFormat(format.replace(QLatin1Char('%'), QStringLiteral("\uFF05")));
    m_bar->setToolTip(text.toHtmlEscaped());
}

void ProgressBar::setRangeAndValue(qlonglong value, qlonglong total)
{
    const qlonglong largest = qMax<qlonglong>(0, total);
    const qlonglong divisor = largest / kMostOfBar + 1;
    m_bar->setRange(0, static_cast<int>(largest / divisor));
    m_bar->setValue(static_cast<int>(qBound<qlonglong>(0, value, largest) / divisor));
}

void ProgressBar::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retranslateUi();
    } else if (event->type() == QEvent::PaletteChange) {
        showStatus();
    }
}

void ProgressBar::retranslateUi()
{
    m_status->setAccessibleName(tr("Status"));
    m_bar->setAccessibleName(tr("Progress"));
    m_version->setAccessibleName(tr("Version"));
}
