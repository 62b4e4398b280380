#include "app/gui/UpperAirTable.h"

#include <QEvent>
#include <QHeaderView>

#include <algorithm>
#include <array>
#include <vector>

namespace {

using aviation::weather::GribLevel;

enum Column
{
    kAltitude,
    kDirection,
    kSpeed,
    kTemperature,
    kDewPoint,
    kHumidity,
    kPressure,
    kColumnCount
};

constexpr std::int16_t kUnknownDegrees = -99;

QString dash()
{
    return QStringLiteral("\u2013");
}

QString degreesText(std::int16_t celsius)
{
    return celsius == kUnknownDegrees ? dash() : QString::number(celsius);
}

QString rounded(float value)
{
    return value < 0.0F ? dash() : QString::number(static_cast<double>(value), 'f', 0);
}

QString directionText(float degrees)
{
    const QString digits = QString::number(static_cast<double>(degrees), 'f', 0);
    return digits.rightJustified(3, QLatin1Char('0'));
}

} // namespace

UpperAirTable::UpperAirTable(QWidget* parent) : QTableWidget(0, kColumnCount, parent)
{
    setObjectName(QStringLiteral("tableWidget_upperair"));
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    retranslateUi();
}

void UpperAirTable::setGrib(const aviation::weather::Grib& grib)
{
    std::vector<GribLevel> levels = grib.levels();
    std::stable_sort(levels.begin(), levels.end(), [](const GribLevel& a, const GribLevel& b) {
        return a.altitude > b.altitude;
    });
    setRowCount(static_cast<int>(levels.size()));
    int row = 0;
    for (const GribLevel& level : levels) {
        fillRow(row++, level);
    }
    layoutColumns();
}

void UpperAirTable::layoutColumns()
{
    std::array<int, kColumnCount> widths{};
    int used = 0;
    for (int column = 0; column < kColumnCount; ++column) {
        widths[column] =
            std::max(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column));
        used += widths[column];
    }
    const int spare = std::max(0, viewport()->width() - used) / kColumnCount;
    for (int column = 0; column < kColumnCount; ++column) {
        setColumnWidth(column, widths[column] + spare);
    }
}

void UpperAirTable::resizeEvent(QResizeEvent* event)
{
    QTableWidget::resizeEvent(event);
    layoutColumns();
}

void UpperAirTable::fillRow(int row, const GribLevel& level)
{
    const auto set = [this, row](Column column, const QString& text) {
        auto* cell = new QTableWidgetItem(text);
        cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        setItem(row, column, cell);
    };
    set(kAltitude, QString::number(level.altitude));
    set(kDirection, directionText(level.wind.Dir));
    set(kSpeed, rounded(level.wind.Speed));
    set(kTemperature, degreesText(level.temperature));
    set(kDewPoint, degreesText(level.dewPoint));
    set(kHumidity, rounded(level.humidity));
    set(kPressure, rounded(level.pressure));
}

void UpperAirTable::changeEvent(QEvent* event)
{
    QTableWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retranslateUi();
    }
}

void UpperAirTable::retranslateUi()
{
    setHorizontalHeaderLabels({tr("Height\nft"), tr("Wind\n\u00B0"), tr("Speed\nkt"),
                               tr("Temp.\n°C"), tr("Dew p.\n°C"), tr("Hum.\n%"),
                               tr("Press.\nhPa")});
    layoutColumns();
    setAccessibleName(tr("Upper air"));
    setToolTip(tr("Upper-air levels near the last report"));
}
