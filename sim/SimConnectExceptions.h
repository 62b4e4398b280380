#pragma once

#include <cstdint>

/// Published name of an exception's number, "SIMCONNECT_EXCEPTION_ERROR" for 1; "unknow" for a
/// number without one.
const char* simConnectExceptionName(std::uint32_t exception);
