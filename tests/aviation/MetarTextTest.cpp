#include "aviation/Metar.h"

#include <gtest/gtest.h>

using namespace aviation::weather;

namespace {

Metar Decoded(const std::wstring& groups, std::int32_t elevation = 300)
{
    Metar metar(L"EDDF 121220Z " + groups);
    metar.setElevation(elevation);
    static_cast<void>(metar.Decode());
    return metar;
}

TEST(MetarText, ShowsEveryLine)
{
    Metar metar = Decoded(L"24015G28KT 210V270 3000 R09L/1200N -RA FEW010 BKN025CB M02/M03 Q1018");
    metar.setInfoText(L"from SYNOP");
    metar.setName(L"Frankfurt");
    metar.setCountry(L"DE");
    metar.setPosition({50.026421, -8.543125});
    EXPECT_EQ(metar.GetDecodedText(),
              L"Info: from SYNOP\nICAO: EDDF\nName: Frankfurt\nCountry: DE\n"
              L"Position: 50.03\u00B0, -8.54\u00B0\nElevation: 300ft\n"
              L"Wind: 240\u00B0/15kt Gust 28kt\n"
              L"Wind Variable: 210\u00B0-270\u00B0\nVisibility: 3000m\n"
              L"RVR: R09L/1200N \nWeather phenomena: RA \n"
              L"Clouds: Few at 1000ft\nClouds: Broken at 2500ft\n"
              L"Temperature/Dewpoint: -2\u00B0/-3\u00B0\n"
              L"QNH: 1018 hpa/30.06 Inch\n");
}

TEST(MetarText, LeavesOutWhatTheReportDoesNotHave)
{
    const std::wstring place =
        L"\nName: \nCountry: \nPosition: 0.00\u00B0, 0.00\u00B0\nElevation: 0ft\n";
    EXPECT_EQ(Metar().GetDecodedText(), L"ICAO: " + place);
    Metar metar = Decoded(L"00003KT 9999 CLR 12/10 A2992", 0);
    metar.setTemperature(-0.7F); // cut towards zero
    metar.setDewPoint(-1.9F);
    metar.setQnh(998.9F);
    EXPECT_EQ(
        metar.GetDecodedText(8000),
        L"ICAO: EDDF" + place
            + L"Wind: 000\u00B0/3kt\nVisibility: 8000m\nTemperature/Dewpoint: 0\u00B0/-1\u00B0\n"
              L"QNH: 998 hpa/29.50 Inch\n");
}

TEST(MetarText, NamesEveryCoverage)
{
    Metar metar(L"x");
    const wchar_t* const words[] = {L"Sky Clear", L"Few",    L"Few",    L"Scattered", L"Scattered",
                                    L"Broken",    L"Broken", L"Broken", L"Overcast"};
    for (std::uint8_t octas = 0; octas <= 8; ++octas) {
        metar.resetDecoded();
        metar.addCloud({0, octas, 700, -1, 700});
        const std::wstring line = std::wstring(L"Clouds: ") + words[octas] + L" at 700ft\n";
        EXPECT_NE(metar.GetDecodedText().find(line), std::wstring::npos) << int{octas};
    }
}

} // namespace
