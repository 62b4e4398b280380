#pragma once

#include "app/base/MainView.h"
#include "aviation/Position.h"

#include <QDockWidget>
#include <QTime>

#include <array>

class QGridLayout;
class QLabel;
class QLineEdit;
class QToolButton;

/// The data page: the aircraft as last seen in the simulator, its radios, and how the weather cycle
/// stands. Main thread.
class DockWidgetData : public QDockWidget, public DataPage
{
    Q_OBJECT
public:
    explicit DockWidgetData(QWidget* parent = nullptr);

    void setWeatherUpdateInterval(const QString& text) override;
    void setInfo1(const QString& text) override;
    void setSimInterfaceInfo(const QString& text) override;
    void setJobsInfo(const QString& text) override;
    void setDwcState(const QString& text, bool enabled) override;
    void clearData() override;

    void setAircraftData(const aviation::structs::AircraftData& aircraft);
    void setFrequencys(const aviation::structs::RadioFrequencys& frequencies);
    void setFlightStatus(const QString& status, const QColor& background, const QColor& foreground);
    void setFlightTime(const QTime& time);
    void setTargetWind(const QString& text);
    void setTargetWindToolTip(const QString& text);

protected:
    void changeEvent(QEvent* event) override;

private:
    enum Field
    {
        kName,
        kLatitude,
        kLongitude,
        kAltitude,
        kHeight,
        kHeading,
        kTrack,
        kVariation,
        kTas,
        kGroundSpeed,
        kVerticalSpeed,
        kWeight,
        kWind,
        kTemperature,
        kVisibility,
        kSimTime,
        kFieldCount
    };
    enum Radio
    {
        kComm1,
        kComm2,
        kNav1,
        kNav2,
        kAdf,
        kTransponder,
        kRadioCount
    };
    enum Group
    {
        kCycle,
        kAircraft,
        kPosition,
        kMotion,
        kAir,
        kRadios,
        kFlight,
        kGroupCount
    };
    struct Line
    {
        QLabel* title = nullptr;
        QLabel* value = nullptr;
    };

    void buildCycle();
    void buildFields();
    void buildRadios();
    void buildFlight();
    QLabel* label(const char* name);
    QLabel* titleLabel();
    void addHeading(Group group);
    void addRow(QLabel* title, QWidget* value);
    void addField(Field field, const char* name);
    void retranslateUi();
    void retranslateFields();
    void setField(Field field, const QString& text);
    QString groundTrack(const aviation::structs::AircraftData& aircraft);

    QWidget* m_contents = nullptr;
    QGridLayout* m_grid = nullptr; ///< titles and values
    std::array<QLabel*, kGroupCount> m_headings{};
    std::array<Line, kFieldCount> m_fields{};
    std::array<Line, kRadioCount> m_radios{};
    QLabel* m_updateInterval = nullptr;
    QLabel* m_info1 = nullptr;
    QLabel* m_simInterface = nullptr;
    QLabel* m_jobs = nullptr;
    QLabel* m_flightStatusTitle = nullptr;
    QLineEdit* m_flightStatus = nullptr;
    QToolButton* m_restart = nullptr;
    QLabel* m_flightTime = nullptr;
    QLabel* m_flightTimeTitle = nullptr;
    QLabel* m_windTitle = nullptr;
    QLineEdit* m_targetWind = nullptr;
    aviation::Position m_lastPosition; ///< for the ground track
    QString m_track;
};
