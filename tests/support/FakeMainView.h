#pragma once

#include "app/base/MainView.h"

#include <QPair>
#include <QVector>

#include <algorithm>
#include <map>

/// Records what the weather page was given.
class FakeWeatherPage final : public WeatherPage
{
public:
    void displayMetar(const aviation::weather::Metar& metar) override { metars.push_back(metar); }
    void OnBackgroundIcao(const QString& icao, bool known) override
    {
        backgrounds.push_back({icao, known});
    }
    void OnEnableGetMetarButton(bool enabled) override { searchEnabled = enabled; }
    void setCompleterList(const QStringList& icaos) override { completer = icaos; }
    void setWeatherTime(const QString&) override {}
    void OnTableGribUpdate(const aviation::weather::Grib& grib) override { gribs.push_back(grib); }

    QVector<aviation::weather::Metar> metars;
    QVector<QPair<QString, bool>> backgrounds;
    bool searchEnabled = true;
    QStringList completer;
    QVector<aviation::weather::Grib> gribs;
};

/// Records what the data page was given.
class FakeDataPage final : public DataPage
{
public:
    void setWeatherUpdateInterval(const QString& text) override { updateInterval = text; }
    void setInfo1(const QString& text) override { info1 << text; }
    void setSimInterfaceInfo(const QString& text) override { interfaceInfo = text; }
    void setJobsInfo(const QString&) override {}
    void setDwcState(const QString& text, bool enabled) override
    {
        dwcText = text;
        dwcEnabled = enabled;
    }
    void clearData() override { ++cleared; }

    QString updateInterval;
    QStringList info1;
    QString interfaceInfo;
    QString dwcText;
    bool dwcEnabled = true;
    int cleared = 0;
};

/// A window without a window: it records everything it is given. Main thread.
class FakeMainView final : public MainView
{
public:
    struct Line
    {
        QString text;
        int level = 0;
    };

    void setConnectText(QString text, bool /*connected*/) override { connectText = text; }
    void OnOutputDebugstring(QString item, int level) override { log.push_back({item, level}); }
    void OnStatusbarStatus(QString text) override { status << text; }
    void showStatusAlarm(const QString& text) override { statusAlarm = text; }
    void showNotice(Notice about, const QString& text) override { notices[about] = text; }
    void clearNotice(Notice about) override { notices.erase(about); }
    void OnProgressBar(qlonglong, qlonglong, QString text) override { progressText = text; }
    void setupLanguage() override {}
    WeatherPage& pageWeather() override { return weatherPage; }
    DataPage& pageData() override { return dataPage; }
    void SetAircraftData(aviation::structs::AircraftData& data) override { aircraft = data; }
    void SetAircraftName(QString title, QString, bool) override { aircraftNames << title; }
    void SetTargetWind(aviation::weather::Wind wind) override { targetWinds.push_back(wind); }
    void SetTargetWind(QString text) override { targetWind = text; }
    void SetTargetWindTooltip(QString text) override { targetWindTip = text; }
    void SetFrequencys(aviation::structs::RadioFrequencys&) override {}
    void setSystrayMessage(QString) override {}
    void setSetWxAction(bool enabled, QString, QString icao) override
    {
        setWxEnabled = enabled;
        setWxIcao = icao;
    }
    void showSplashMessage(QString) override {}
    void closeSplash() override { splashClosed = true; }
    void closeProgram() override { programClosed = true; }

    /// Log lines that contain a text.
    int linesWith(const QString& part) const
    {
        return static_cast<int>(std::count_if(log.begin(), log.end(), [&part](const Line& line) {
            return line.text.contains(part);
        }));
    }
    /// Level of the last line that contains a text, -1 without one.
    int levelOf(const QString& part) const
    {
        int level = -1;
        for (const Line& line : log) {
            level = line.text.contains(part) ? line.level : level;
        }
        return level;
    }

    FakeWeatherPage weatherPage;
    FakeDataPage dataPage;
    QString connectText;
    QVector<Line> log;
    QString statusAlarm;
    QString progressText;
    QStringList status;
    std::map<Notice, QString> notices; ///< those that stand
    aviation::structs::AircraftData aircraft;
    QStringList aircraftNames;
    QVector<aviation::weather::Wind> targetWinds;
    QString targetWind;
    QString targetWindTip;
    bool setWxEnabled = false;
    QString setWxIcao;
    bool splashClosed = false;
    bool programClosed = false;
};
