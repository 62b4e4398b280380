#include "sim/FsInterfaceBase.h"

#include <algorithm>
#include <array>

namespace {

struct ResultText
{
    int code;
    const char* text;
};

// The spelling is what other programs and logs have.
constexpr std::array kResultTexts{
    ResultText{simresult::kNone, "No Error"},
    ResultText{simresult::kNotConnected, "Not Connected"},
    ResultText{simresult::kAlreadyConnected, "Is already connected"},
    ResultText{simresult::kConnectionLost, "Connection lost"},
    ResultText{simresult::kWrongFsVersion, "wrong FS version for this client"},
    ResultText{simresult::kTimeout, "Time out. Connection lost"},
    ResultText{simresult::kNoInterface, "FSInterface not initalized"},
    ResultText{simresult::kPaused, "Sim in pause"},
    ResultText{simresult::kNotImplemented, "Function is not implemented is this client"},
};

} // namespace

FsInterfaceBase::FsInterfaceBase(QObject* parent) : QObject(parent) {}
FsInterfaceBase::~FsInterfaceBase() = default;

int FsInterfaceBase::Connect()
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::Disconnect()
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::ClearWeather()
{
    return simresult::kNotImplemented;
}
void FsInterfaceBase::Reserved1() {}
int FsInterfaceBase::GetAircraftData(aviation::structs::AircraftData&)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::GetAircraftPayload(aviation::structs::AircraftPayload&)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::SetAircraftPayload(const aviation::structs::AircraftPayload&)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::GetAircraftFuel(aviation::structs::AircraftFuel&)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::SetAircraftFuel(const aviation::structs::AircraftFuel&)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::GetDateTime(QDateTime&)
{
    return simresult::kNotImplemented;
}
void FsInterfaceBase::Reserved2() {}
int FsInterfaceBase::SetWeatherData(const XPlaneWeather&, int)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::SetWeatherText(const QString&)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::SetWeatherRecord(const NewWeather&)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::SetWeatherTheme(const std::string&)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::SetWindLayers(const std::vector<XPlaneWindLayer>&)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::SetWindAtAircraft(const aviation::weather::Wind&)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::SetVisibility(int)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::SetGlobalWindFile(const QByteArray&)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::SetTurbulenceWindFile(const QByteArray&)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::ActivateWeather()
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::GetWeatherAt(QString&, double, double)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::CreateStation(const std::string&, const std::string&, float, float, float)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::GetRadioFrequencys(aviation::structs::RadioFrequencys&)
{
    return simresult::kNotImplemented;
}
int FsInterfaceBase::SetRadioFrequencys(const aviation::structs::RadioFrequencys&)
{
    return simresult::kNotImplemented;
}
void FsInterfaceBase::Reserved3() {}
int FsInterfaceBase::LoadFlightPlan(const QString&)
{
    return simresult::kNotImplemented;
}

int FsInterfaceBase::checkLink()
{
    return simresult::kNone;
}
bool FsInterfaceBase::writeAnswered() const
{
    return true;
}

QString FsInterfaceBase::ErrorText(int code)
{
    const auto* const row =
        std::find_if(kResultTexts.begin(), kResultTexts.end(),
                     [code](const ResultText& candidate) { return candidate.code == code; });
    return QString::fromLatin1(row == kResultTexts.end() ? "Error number not found" : row->text);
}

void FsInterfaceBase::OnDebugString(const QString& item, int level)
{
    Q_EMIT sigDebugString(item, level);
}
