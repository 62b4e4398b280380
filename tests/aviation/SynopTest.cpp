#include "aviation/Synop.h"

#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

#include <tuple>

using namespace aviation;
using namespace aviation::weather;

namespace {

TEST(SynopTest, HeadersOfAllKinds)
{
    const FakeClock clock(2023, 1, 1, 0, 5);
    const struct
    {
        std::wstring report;
        SynopType type;
        std::tuple<std::wstring, std::wstring, int> expected; ///< station, time, unit of the wind
        Position position;
    } rows[] = {
        {L"AAXX 31121 10384 11458", SynopType::Land, {L"10384", L"311200Z", 1}, {}},
        {L"AAXX 3112/ 10384 11458", SynopType::Land, {L"10384", L"311200Z", 4}, {}},
        {L"BBXX 31120 31121 99607 70455 46/// /1204 10251",
         SynopType::Ship,
         {L"9960770455", L"311200Z", 1},
         {60.7, -45.5}},
        {L"OOXX 3112Z 31121 99607 30455 46/// /1204 10251",
         SynopType::Mobile,
         {L"9960730455", L"311200Z", 1},
         {-60.7, 45.5}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.report));
        Synop synop(row.report);
        for (const bool whole : {false, true}) {
            EXPECT_EQ(whole ? synop.Decode() : synop.DecodeHeader(), synopstatus::kDecoded);
            EXPECT_EQ(std::tuple(synop.icao(), synop.timeGroup(), synop.synop().windUnit),
                      row.expected);
            EXPECT_EQ(synop.type(), row.type);
            EXPECT_EQ(synop.isDecoded(), whole);
        }
        EXPECT_EQ(synop.time(), 1672488000) << "of the last year";
        EXPECT_TRUE(synop.isHeaderDecoded() && synop.isTimeValid());
        EXPECT_EQ(synop.hasOwnPosition(), row.type != SynopType::Land);
        EXPECT_DOUBLE_EQ(synop.latitude(), row.position.latitude());
        EXPECT_DOUBLE_EQ(synop.longitude(), row.position.longitude());
    }
    Synop nowhere(L"BBXX ZDL 19003 99607 20455 46/// /1204 10251");
    EXPECT_EQ(nowhere.Decode(), synopstatus::kDecoded);
    EXPECT_FALSE(nowhere.hasOwnPosition());
    Synop slashes(L"AAXX 21121 15/// 02999 82710"); // only the header step takes them
    EXPECT_EQ(slashes.DecodeHeader(), synopstatus::kDecoded);
    EXPECT_EQ(slashes.Decode(), synopstatus::kNoHeader);
}

TEST(SynopTest, FailuresHaveAStatusAndAText)
{
    const std::wstring noType = L"(SynopDecoder) - Error: Header - No Synop Type founded: ";
    const std::wstring outOfRange = L"(SynopDecoder) - Error: Header - out of range";
    const std::tuple<std::wstring, int, std::wstring, std::wstring> rows[] = {
        {L"AAXX 2112", synopstatus::kTooShort, L"", L""},
        {L" AAXX 21121 15001", synopstatus::kNoHeader, noType + L" AAXX 21121 15001", L""},
        {L"BBXX 19061 99607 70455 46///", synopstatus::kOutOfRange, outOfRange + L": ", outOfRange},
        {L"OOXX Z 19061 99607 70455 46///", synopstatus::kOutOfRange, outOfRange + L": ",
         outOfRange},
    };
    for (const auto& [report, status, headerMessage, message] : rows) {
        SCOPED_TRACE(testing::PrintToString(report));
        Synop header(report);
        EXPECT_EQ(header.DecodeHeader(), status);
        EXPECT_EQ(header.GetMessage(), headerMessage);
        EXPECT_EQ(header.messageLevel(), headerMessage.empty() ? 0U : kMessageError);
        EXPECT_FALSE(header.isHeaderDecoded());
        Synop whole(report);
        EXPECT_EQ(whole.Decode(), status);
        EXPECT_EQ(whole.GetMessage(), message);
        EXPECT_FALSE(whole.isDecoded());
    }
}

TEST(SynopTest, DecodingAgainStartsAfresh)
{
    Synop synop(L"AAXX 21121 15001 05515 32931 10103 82110 333 83145 91111");
    synop.setName(L"Ocna Sugatag");
    synop.setPosition({47.8, 23.9});
    EXPECT_EQ(synop.Decode(), 0);
    EXPECT_EQ(synop.Decode(), 0);
    EXPECT_EQ(synop.clouds().size(), 1U);

    synop.setReportText(L"AAXX 21181 15001 0////");
    EXPECT_EQ(synop.Decode(), 0);
    EXPECT_TRUE(synop.clouds().empty());
    EXPECT_FALSE(synop.windSeen() || synop.cloudCodesRead());
    EXPECT_EQ(synop.temperature(), 15.0F);
    EXPECT_EQ(synop.name(), L"Ocna Sugatag"); // the table's, not the report's
    EXPECT_EQ(synop.latitude(), 47.8);
}

TEST(SynopTest, LongLinesDecodeInTime)
{
    constexpr std::size_t kLength = 2'000'000;
    const std::wstring blanks(kLength, L' ');
    std::wstring layers = L"AAXX 21121 15001 333 ";
    while (layers.size() < kLength) {
        layers += L"83145 ";
    }
    const std::wstring reports[] = {
        L"BBXX" + blanks,
        L"BBXX" + std::wstring(kLength, L'\t') + L"ZDLP" + blanks,
        L"OOXX" + blanks + L"ZDLP" + blanks + L"12341 99",
        L"AAXX 21121" + blanks,
        std::wstring(kLength, L'\0'),
        std::wstring(kLength, L'9'),
        layers,
    };
    for (const std::wstring& report : reports) {
        Synop synop(report);
        static_cast<void>(synop.DecodeHeader());
        static_cast<void>(synop.Decode());
        EXPECT_LE(synop.clouds().size(), kLength / 6);
    }
}

} // namespace
