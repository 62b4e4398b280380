#pragma once

/// The phase of the flight as far as the weather cycle asks for it.
enum class FlightPhase
{
    Unknown,
    Approach,
    Landing,
    GoAround,
    Other
};
