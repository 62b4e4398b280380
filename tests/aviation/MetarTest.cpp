#include "aviation/Metar.h"

#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

using namespace aviation::weather;

namespace {

/// Decodes the groups after a header that is always good, at an elevation of 300 feet.
Metar decoded(const std::wstring& groups, std::int32_t elevation = 300)
{
    Metar metar(L"EDDF 121220Z " + groups);
    metar.setElevation(elevation);
    static_cast<void>(metar.Decode());
    return metar;
}

TEST(MetarTest, HeaderIsReadAloneAndMayBeMissing)
{
    const FakeClock clock(2026, 3, 1, 0, 5, 41);
    Metar metar(L"EDDF 282330Z 00000KT CAVOK 12/10 Q1018");
    EXPECT_EQ(metar.DecodeHeader(), metarstatus::kDecoded);
    EXPECT_EQ(metar.icao(), L"EDDF");
    EXPECT_EQ(metar.timeGroup(), L"282330");
    EXPECT_EQ(metar.visibility(), 30000) << "the header step reads no more";
    metar.setIcao(L"EDDM");
    for (int step = 0; step < 2; ++step) {
        EXPECT_EQ(metar.time(), 1772321441) << "last month, second 41 of the clock";
        EXPECT_EQ(metar.Decode(), metarstatus::kDecoded);
        EXPECT_EQ(metar.icao(), L"EDDM") << "a station that has a name keeps it";
    }
    Metar spoiled(L"EDDF 1212Z 00000KT CAVOK");
    EXPECT_EQ(spoiled.DecodeHeader(), metarstatus::kDecoded);
    EXPECT_EQ(spoiled.icao(), L"");
    EXPECT_EQ(spoiled.Decode(), metarstatus::kNoWind) << "the header stays in front of the wind";
    Metar tooShort(L"EDDF 1212");
    EXPECT_EQ(tooShort.DecodeHeader(), metarstatus::kTooShort);
    EXPECT_EQ(tooShort.Decode(), metarstatus::kTooShort);
    EXPECT_FALSE(tooShort.isDecoded());
}

TEST(MetarTest, TextHasEveryLine)
{
    Metar metar = decoded(L"24015G28KT 210V270 3000 R09L/1200N -RA FEW010 BKN025CB M02/M03 Q1018");
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

TEST(MetarTest, TextLeavesOutWhatTheReportDoesNotHave)
{
    const std::wstring place =
        L"\nName: \nCountry: \nPosition: 0.00\u00B0, 0.00\u00B0\nElevation: 0ft\n";
    EXPECT_EQ(Metar().GetDecodedText(), L"ICAO: " + place);
    Metar metar = decoded(L"00003KT 9999 CLR 12/10 A2992", 0);
    metar.setTemperature(-0.7F); // cut towards zero
    metar.setDewPoint(-1.9F);
    metar.setQnh(998.9F);
    const std::wstring front = L"ICAO: EDDF" + place + L"Wind: 000\u00B0/3kt\nVisibility: 8000m\n";
    const std::wstring back = L"Temperature/Dewpoint: 0\u00B0/-1\u00B0\nQNH: 998 hpa/29.50 Inch\n";
    EXPECT_EQ(metar.GetDecodedText(8000), front + back);
    const wchar_t* const words[] = {L"Sky Clear", L"Few",    L"Few",    L"Scattered", L"Scattered",
                                    L"Broken",    L"Broken", L"Broken", L"Overcast"};
    std::wstring clouds;
    for (std::uint8_t octas = 0; octas <= 8; ++octas) {
        metar.addCloud({0, octas, 700, -1, 700});
        clouds.append(L"Clouds: ").append(words[octas]).append(L" at 700ft\n");
    }
    EXPECT_EQ(metar.GetDecodedText(8000), front + clouds + back);
}

TEST(MetarTest, ResetKeepsIdentityAndForgetsTheRest)
{
    Metar metar = decoded(L"24015G30KT 210V270 CAVOK 12/10 Q0990");
    metar.setInfoText(L"note");
    metar.resetDecoded();
    EXPECT_EQ(metar.icao() + metar.infoText(), L"EDDFnote");
    EXPECT_FALSE(metar.isCavok() || metar.cloudsSeen() || metar.hasVariableLimits());
    EXPECT_FALSE(metar.isDecoded() || metar.isHeaderDecoded());
    metar.setReportText(L"EDDF 121220Z 24015KT 9999 NSC FEW010 12/10 A2992");
    for (int turn = 0; turn < 2; ++turn) {
        EXPECT_EQ(metar.Decode(), metarstatus::kDecoded);
        EXPECT_EQ(metar.wind().Gust, 0.0F);
        EXPECT_EQ(metar.clouds().size(), 2U);
    }
}

TEST(MetarTest, LongLinesDecodeInTime)
{
    constexpr std::size_t kLength = 2'000'000;
    for (const std::wstring_view filling :
         {L" ", L"R09/1200 ", L"4000N ", L"+TSRA ", L"NSC", L"BKN020 ", L"1/1SM ", L"CLR/"})
    {
        std::wstring groups = L"24015KT 9999 CLR ";
        groups.reserve(kLength + 100);
        while (groups.size() < kLength) {
            groups += filling;
        }
        EXPECT_TRUE(decoded(groups + L" 12/10").windSeen());
    }
}

} // namespace
