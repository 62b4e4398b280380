#pragma once

#include "app/base/MainView.h"
#include "aviation/Metar.h"

#include <QHash>
#include <QPointer>
#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class UpperAirTable;
class WidgetMetarUndock;

/// The METAR page: the reports of the flight with the newest on top, a search by ICAO code, and the
/// upper air of the last report. Of the reports only the newest 500 stay. Main thread.
class MainWidgetWeather : public QWidget, public WeatherPage
{
    Q_OBJECT
public:
    explicit MainWidgetWeather(QWidget* parent = nullptr);
    ~MainWidgetWeather() override;

    void displayMetar(const aviation::weather::Metar& metar) override;
    void OnBackgroundIcao(const QString& icao, bool known) override;
    void OnEnableGetMetarButton(bool enabled) override;
    void setCompleterList(const QStringList& icaos) override;
    void setWeatherTime(const QString& text) override;
    void OnTableGribUpdate(const aviation::weather::Grib& grib) override;

public Q_SLOTS:
    void OnGetMetarClicked();
    void clearContent();
    void copyMetar();
    /// Shows the report of the current row in a window above the others.
    void openOnTop();

Q_SIGNALS:
    void OnMetarRequest(QString icao);

protected:
    void changeEvent(QEvent* event) override;

private:
    QWidget* buildReports();
    QWidget* buildUpperAir();
    void buildSearch();
    void retranslateUi();
    void showContextMenu(const QPoint& position);
    void openWindow(const QListWidgetItem* item);
    void dropOldRows();
    void limitMap();

    QLabel* m_icaoLabel = nullptr;
    QLineEdit* m_icao = nullptr;
    QPushButton* m_search = nullptr;
    QLabel* m_weatherTime = nullptr;
    QLabel* m_reportsTitle = nullptr;
    QLabel* m_upperAirTitle = nullptr;
    QListWidget* m_list = nullptr;
    UpperAirTable* m_upperAir = nullptr;
    QString m_lastText;
    bool m_grey = false;                                ///< colour of the next row
    QHash<QString, aviation::weather::Metar> m_reports; ///< by ICAO
    QHash<QString, QPointer<WidgetMetarUndock>> m_windows;
};
