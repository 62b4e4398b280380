#pragma once

#include "app/base/MainView.h"

#include <QColor>
#include <QMainWindow>
#include <QTime>

#include <memory>

class DockWidgetData;
class DockWidgetDebug;
class DockWidgetLoadeditor;
class MainActions;
class MainToolBar;
class MainWidgetFlightplanner;
class MainWidgetWeather;
class NoticeBar;
class ProgressBar;

/// The main window's widgets and what the controller and other pages ask of them; knows neither
/// settings nor controller. Main thread.
class BackendBase : public QMainWindow, public MainView
{
    Q_OBJECT
public:
    explicit BackendBase(QWidget* parent = nullptr);
    ~BackendBase() override;

    void setConnectText(QString text, bool connected) override;
    void OnStatusbarStatus(QString text) override;
    void showStatusAlarm(const QString& text) override;
    void showNotice(Notice about, const QString& text) override;
    void clearNotice(Notice about) override;
    void OnProgressBar(qlonglong value, qlonglong total, QString text) override;
    WeatherPage& pageWeather() override;
    DataPage& pageData() override;
    void SetAircraftData(aviation::structs::AircraftData& aircraft) override;
    void SetAircraftName(QString title, QString checklist, bool found) override;
    void SetFrequencys(aviation::structs::RadioFrequencys& frequencies) override;
    void setSetWxAction(bool enabled, QString text, QString icao) override;

public Q_SLOTS:
    void setFlightStatus(QString status, QColor background, QColor foreground);
    void setFlightTime(QTime time);
    void SetTargetWind(aviation::weather::Wind wind) override;
    void SetTargetWind(QString text) override;
    void SetTargetWindTooltip(QString text) override;
    /// Adds an action to the menu View.
    void OnSetMenuView(QAction* action);
    void OnOpenFlightplanner();
    /// Brings the METAR page to the front.
    void OnButtonSetPage();

protected:
    void changeEvent(QEvent* event) override;
    /// Builds menus, docks, tool bar and status bar, in this order of the docks: weather, debug,
    /// planner, data, load editor.
    void setupUi();
    /// From now on progress is shown.
    void setBuilt() { m_built = true; }
    virtual void retranslateUi();

    MainActions& actions() { return *m_actions; }
    MainToolBar& toolBar() { return *m_toolBar; }
    NoticeBar& noticeBar() { return *m_notices; }
    MainWidgetWeather& weatherWidget() { return *m_weather; }
    DockWidgetDebug& debugDock() { return *m_debug; }
    MainWidgetFlightplanner& flightplanner() { return *m_flightplanner; }

private:
    void createDocks();
    void createToolBar();
    void createNoticeBar();
    void createStatusBar();
    void retranslateToggles();

    MainActions* m_actions = nullptr;
    MainToolBar* m_toolBar = nullptr;
    NoticeBar* m_notices = nullptr;
    ProgressBar* m_progress = nullptr;
    MainWidgetWeather* m_weather = nullptr;
    DockWidgetDebug* m_debug = nullptr;
    MainWidgetFlightplanner* m_flightplanner = nullptr;
    DockWidgetData* m_data = nullptr;
    DockWidgetLoadeditor* m_loadeditor = nullptr;
    bool m_built = false;
};
