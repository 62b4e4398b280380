#pragma once

#include "nav/records/QStation.h"

/// An airport of the navigation data. Plain value.
struct QAirport : QStation
{
    using QStation::QStation;
};
