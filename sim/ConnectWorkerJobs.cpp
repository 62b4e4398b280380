#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "aviation/support/ScopedLock.h"
#include "sim/ConnectWorker.h"
#include "sim/FsInterfaceBase.h"
#include "sim/FsInterfaceExtras.h"

#include <QDateTime>

using aviation::ScopedLock;

int ConnectWorker::getAircraftData(Job& /*job*/)
{
    aviation::structs::AircraftData data = aircraftData();
    const int result = m_interface->GetAircraftData(data);
    const bool paused = result == simresult::kPaused;
    if (result == simresult::kNone) {
        const ScopedLock lock(m_stateMutex);
        m_aircraftData = data;
    } else if (!paused && result != m_loggedAircraftError) {
        log(QStringLiteral("(ConnectWorker) get aircraft data failed: %1").arg(errorText(result)),
            loglevel::kError);
    }
    m_loggedAircraftError = paused ? simresult::kNone : result;
    return result;
}

int ConnectWorker::getFuel(Job& /*job*/)
{
    aviation::structs::AircraftFuel fuel;
    setFuel(fuel);
    const int result = m_interface->GetAircraftFuel(fuel);
    if (result == simresult::kNone) {
        setFuel(fuel);
    } else {
        log(QStringLiteral("(ConnectWorker) get aircraft fuel failed, code: %1").arg(result),
            loglevel::kError);
    }
    return result;
}

int ConnectWorker::setFuelInSimulator(Job& /*job*/)
{
    const int result = m_interface->SetAircraftFuel(fuel());
    if (result != simresult::kNone) {
        log(QStringLiteral("(ConnectWorker) set aircraft fuel failed"), loglevel::kError);
    }
    return result;
}

int ConnectWorker::getPayload(Job& /*job*/)
{
    aviation::structs::AircraftPayload payload;
    setPayload(payload);
    const int result = m_interface->GetAircraftPayload(payload);
    if (result == simresult::kNone) {
        setPayload(payload);
    } else {
        log(QStringLiteral("(ConnectWorker) get aircraft payload failed"), loglevel::kError);
    }
    return result;
}

int ConnectWorker::setPayloadInSimulator(Job& /*job*/)
{
    const int result = m_interface->SetAircraftPayload(payload());
    if (result != simresult::kNone) {
        // Deliberately the text of the fuel: users and their tools know it so.
        log(QStringLiteral("(ConnectWorker) set aircraft fuel failed"), loglevel::kError);
    }
    return result;
}

int ConnectWorker::getRadioFrequencys(Job& /*job*/)
{
    aviation::structs::RadioFrequencys frequencies = radios();
    const int result = m_interface->GetRadioFrequencys(frequencies);
    if (result == simresult::kNone) {
        setRadios(frequencies);
    } else {
        log(QStringLiteral("(ConnectWorker) get radio frequency"), loglevel::kError);
    }
    return result;
}

int ConnectWorker::setRadioFrequencys(Job& /*job*/)
{
    return m_interface->SetRadioFrequencys(radios());
}

int ConnectWorker::loadFlightPlan(Job& job)
{
    return m_interface->LoadFlightPlan(job.name);
}

int ConnectWorker::sendText(Job& job)
{
    if (!m_settings.fsMessage()) {
        return simresult::kNone;
    }
    return m_interface->SendText(job.name.toStdString(), m_settings.fsMessageTime());
}

int ConnectWorker::getDateTime(Job& job)
{
    QDateTime dateTime;
    const int result = m_interface->GetDateTime(dateTime);
    if (result == simresult::kNone) {
        job.name = dateTime.toUTC().toString(QStringLiteral("dd.MM.yyyy hh:mm:ss"));
    }
    return result;
}

int ConnectWorker::requestServerConfig(Job& job)
{
    auto* const bridge = dynamic_cast<BridgeOperations*>(m_interface.get());
    if (m_settings.interfaceType() != aviation::interfaceid::kBridge || bridge == nullptr) {
        return simresult::kNotImplemented;
    }
    QByteArray contents;
    const int result = bridge->requestServerConfig(contents);
    if (result == simresult::kNone) {
        job.name = QString::fromUtf8(contents);
    }
    return result;
}

int ConnectWorker::announceAddress(Job& job)
{
    auto* const bridge = dynamic_cast<BridgeOperations*>(m_interface.get());
    if (m_settings.interfaceType() != aviation::interfaceid::kBridge || bridge == nullptr) {
        return simresult::kNoInterface;
    }
    QString port;
    const int result = bridge->announceAddress(job.name, port);
    if (result == simresult::kNone) {
        job.name = port;
    }
    return result;
}

int ConnectWorker::notImplemented(Job& /*job*/)
{
    return simresult::kNotImplemented;
}

int ConnectWorker::wrongVersion(Job& /*job*/)
{
    return simresult::kWrongFsVersion;
}
