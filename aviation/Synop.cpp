#include "aviation/Synop.h"

#include "aviation/SynopDecoding.h"
#include "aviation/support/Clock.h"
#include "aviation/support/NumberText.h"
#include "aviation/support/ReportTime.h"

namespace aviation::weather {

namespace {

using synopdecoding::Header;

constexpr std::size_t kShortestReport = 10;

/// Copied over used values, which keep their memory that way.
template <class Values>
const Values& freshValues()
{
    static const Values fresh;
    return fresh;
}

/// A slash says that the unit isn't known; digits beyond 3 say nothing and leave it as it was.
std::uint8_t windUnitFrom(wchar_t indicator, std::uint8_t before)
{
    if (indicator == L'/') {
        return kWindUnitUnknown;
    }
    return indicator <= L'3' ? static_cast<std::uint8_t>(indicator - L'0') : before;
}

} // namespace

void Synop::storeTime(std::wstring_view dayText, std::wstring_view hourText)
{
    constexpr std::size_t kMostDigits = 2;
    constexpr std::wstring_view kMinutes = L"00Z";
    m_synop.timeGroup.fill(L'\0');
    wchar_t* end = m_synop.timeGroup.data();
    end += dayText.copy(end, kMostDigits);
    end += hourText.copy(end, kMostDigits);
    kMinutes.copy(end, kMinutes.size());
    setTime(reportSeconds(integerFromDigits(dayText), integerFromDigits(hourText), 0));
    m_timeValid = true;
}

void Synop::storeHeader(const Header& header)
{
    storeTime(header.day, header.hour);
    m_synop.type = header.type;
    m_synop.windUnit = windUnitFrom(header.windIndicator, m_synop.windUnit);
    setIcao(std::wstring(header.number).append(header.numberTail));
    if (header.type != SynopType::Land) {
        setName(std::wstring(header.callSign));
    }
    if (header.position.isKnown()) {
        setPosition(header.position);
    }
    m_headerDecoded = true;
}

int Synop::DecodeHeader()
{
    m_status = synopstatus::kTooShort;
    m_synop.cloudCodesRead = false;
    if (m_reportText.size() < kShortestReport) {
        return m_status;
    }
    GroupReader report(m_reportText);
    const Header header = synopdecoding::readHeader(report, true);
    if (header.outcome == Header::Outcome::OutOfRange) {
        return fail(synopstatus::kOutOfRange, L"(SynopDecoder) - Error: Header - out of range: ");
    }
    if (header.outcome == Header::Outcome::None) {
        SetMessage(L"(SynopDecoder) - Error: Header - No Synop Type founded: " + m_reportText,
                   kMessageError);
        return m_status = synopstatus::kNoHeader;
    }
    storeHeader(header);
    return m_status = synopstatus::kDecoded;
}

void Synop::resetDecoded()
{
    m_values = freshValues<SurfaceValues>();
    m_synop = freshValues<SynopValues>();
    m_timeValid = false;
    m_decoded = false;
}

int Synop::Decode()
{
    if (m_reportText.size() < kShortestReport) {
        return m_status = synopstatus::kTooShort;
    }
    resetDecoded();
    synopdecoding::Reading reading{GroupReader(m_reportText), m_values, m_synop};
    const Header header = synopdecoding::readHeader(reading.report, false);
    if (header.outcome == Header::Outcome::OutOfRange) {
        return fail(synopstatus::kOutOfRange, L"(SynopDecoder) - Error: Header - out of range");
    }
    if (header.outcome == Header::Outcome::None) {
        return m_status = synopstatus::kNoHeader;
    }
    storeHeader(header);
    m_decoded = true;
    synopdecoding::readSurface(reading);
    synopdecoding::readSea(reading);
    synopdecoding::readRegional(reading);
    synopdecoding::readMountain(reading);
    synopdecoding::readNational(reading);
    return m_status = synopstatus::kDecoded;
}

} // namespace aviation::weather
