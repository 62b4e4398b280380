#pragma once

#include "aviation/AircraftData.h"
#include "aviation/AircraftLoad.h"
#include "aviation/FsId.h"
#include "aviation/RadioFrequencys.h"
#include "aviation/Wind.h"
#include "sim/SimResult.h"
#include "weather/output/records/NewWeather.h"
#include "weather/output/records/XPlaneWeather.h"

#include <QByteArray>
#include <QDateTime>
#include <QObject>
#include <QString>

#include <string>
#include <vector>

/// A connection to a simulator. Created, used and deleted on ConnectWorker's thread only; no member
/// of the family is thread-safe. Every operation returns a code of simresult, 0 for success, and
/// leaves its out arguments alone on failure. Not reusable after Disconnect. The operations that a
/// member doesn't override return simresult::kNotImplemented.
class FsInterfaceBase : public QObject
{
    Q_OBJECT
public:
    explicit FsInterfaceBase(QObject* parent = nullptr);
    ~FsInterfaceBase() override;

    virtual int Connect();
    virtual int Disconnect();
    virtual int ClearWeather();
    virtual int GetFsVersion(aviation::FsId& id, QString& name) = 0;
    virtual int GetInterface(int& id, QString& name) = 0;
    /// UTF-8 text for the simulator's screen.
    virtual int SendText(const std::string& text, int seconds) = 0;
    virtual void Reserved1();
    virtual int GetAircraftData(aviation::structs::AircraftData& data);
    virtual int GetAircraftPayload(aviation::structs::AircraftPayload& payload);
    virtual int SetAircraftPayload(const aviation::structs::AircraftPayload& payload);
    virtual int GetAircraftFuel(aviation::structs::AircraftFuel& fuel);
    virtual int SetAircraftFuel(const aviation::structs::AircraftFuel& fuel);
    /// UTC.
    virtual int GetDateTime(QDateTime& dateTime);
    virtual void Reserved2();
    /// `mode`: kWeatherTextWx for the text with WX, any other the one without.
    virtual int SetWeatherData(const XPlaneWeather& weather, int mode);
    /// A METAR observation, or the whole text for the simulators that take one text block.
    virtual int SetWeatherText(const QString& text);
    virtual int SetWeatherRecord(const NewWeather& record);
    /// UTF-8 name of a theme or its file.
    virtual int SetWeatherTheme(const std::string& name);
    virtual int SetWindLayers(const std::vector<XPlaneWindLayer>& layers);
    virtual int SetWindAtAircraft(const aviation::weather::Wind& wind);
    virtual int SetVisibility(int metres);
    virtual int SetGlobalWindFile(const QByteArray& contents);
    virtual int SetTurbulenceWindFile(const QByteArray& contents);
    virtual int ActivateWeather();
    /// The observation at a place, degrees.
    virtual int GetWeatherAt(QString& observation, double latitude, double longitude);
    /// UTF-8 names, degrees, feet.
    virtual int CreateStation(const std::string& icao, const std::string& name, float latitude,
                              float longitude, float elevation);
    virtual int GetRadioFrequencys(aviation::structs::RadioFrequencys& radios);
    virtual int SetRadioFrequencys(const aviation::structs::RadioFrequencys& radios);
    virtual void Reserved3();
    virtual int LoadFlightPlan(const QString& path);

    /// Whether the connection still stands, between two jobs: kTimeout when it doesn't. Costs no
    /// time unless there is a reason for doubt.
    virtual int checkLink();
    /// Whether the other end has answered the last write. An unanswered one may have gone nowhere,
    /// and so isn't called a success.
    virtual bool writeAnswered() const;

    /// 0 until a connect learned it.
    aviation::FsId fsVersion() const { return m_fsVersion; }
    bool connected() const { return m_connected; }

    /// The message of a result code; "Error number not found" for one without a text.
    static QString ErrorText(int code);

public Q_SLOTS:
    void OnDebugString(const QString& item, int level);

Q_SIGNALS:
    void sigDebugString(QString text, int level);
    void sigDataReceived(QByteArray byteArray);

protected:
    aviation::FsId m_fsVersion = aviation::fsid::kNone;
    bool m_connected = false;
};
