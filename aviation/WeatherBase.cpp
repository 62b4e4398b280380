#include "aviation/WeatherBase.h"

namespace aviation::weather {

void WeatherBase::SetMessage(std::wstring text, unsigned level, bool append)
{
    m_messageLevel = level;
    m_message = append ? m_message + L"\n" + text : std::move(text);
}

bool WeatherBase::CheckAge(std::int64_t now, std::int64_t limitSeconds)
{
    m_outdated = now - time() > limitSeconds;
    return m_outdated;
}

int WeatherBase::fail(int status, const wchar_t* message)
{
    m_status = status;
    SetMessage(message, kMessageError);
    return status;
}

} // namespace aviation::weather
