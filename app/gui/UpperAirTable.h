#pragma once

#include "aviation/Grib.h"

#include <QTableWidget>

/// The levels of one upper-air record, the highest on top; unknown values are dashes.
class UpperAirTable : public QTableWidget
{
    Q_OBJECT
public:
    explicit UpperAirTable(QWidget* parent = nullptr);

    void setGrib(const aviation::weather::Grib& grib);

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void retranslateUi();
    /// Every column as wide as its contents, the rest of the room shared among them.
    void layoutColumns();
    void fillRow(int row, const aviation::weather::GribLevel& level);
};
