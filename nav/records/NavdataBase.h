#pragma once

#include "nav/records/QAirport.h"

#include <QVector>

/// The one source of navigation data, chosen at start-up. Main thread.
class NavdataBase
{
public:
    NavdataBase() = default;
    NavdataBase(const NavdataBase&) = delete;
    NavdataBase& operator=(const NavdataBase&) = delete;
    virtual ~NavdataBase() = default;

    /// All airports; empty if the source can't be read.
    virtual QVector<QAirport> ReadAirports() = 0;
};
