#pragma once

#include "app/base/Reporting.h"

#include <QCoreApplication>
#include <QString>

#include <cstdint>
#include <optional>

class MainView;

/// Says that the weather waits for upper-air data, for as long as it does. Main thread; owned by
/// the controller.
class UpperAirWait
{
    Q_DECLARE_TR_FUNCTIONS(UpperAirWait)
public:
    /// The view outlives it.
    UpperAirWait(MainView& view, LogFunction log);

    /// The data of a place were asked for in vain. The status bar says so each time, since others
    /// write there too, the log at the first, unless it has said so in the last minutes: a server
    /// that gives data now and then would fill it.
    void goesOn(const QString& place);
    void ended();

private:
    MainView& m_view;
    const LogFunction m_log;
    bool m_isSaid = false;                  ///< of this wait
    std::optional<std::int64_t> m_saidAtMs; ///< in the log
};
