#pragma once

#include "aviation/Metar.h"

#include <QWidget>

class QLabel;

/// One report in a window of its own that stays above the others, so that it can lie over the
/// simulator. Deletes itself when closed.
class WidgetMetarUndock : public QWidget
{
    Q_OBJECT
public:
    /// `metar` is decoded.
    explicit WidgetMetarUndock(const aviation::weather::Metar& metar, QWidget* parent = nullptr);

    QString icao() const { return m_icao; }
    void setMetar(const aviation::weather::Metar& metar);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString m_icao;
    QLabel* m_raw;
    QLabel* m_decoded;
};
