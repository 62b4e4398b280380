#include "standins/faults/FaultOrder.h"

#include "standins/simulator/Fault.h"
#include "standins/wxserver/Fault.h"

#include <gtest/gtest.h>

namespace {

TEST(FaultOrderTest, OfAMessageIsReadAndWrittenBack)
{
    for (const char* text :
         {"none", "silent", "slow:1500", "wrongid*2", "refuse:no room@5/11", "cut:10",
          "cut:10,400@8*3", "wrongapi:3.1", "udpforeign", "refuse:a=b"})
    {
        const auto fault = simulator::parseFault(QString::fromLatin1(text));
        ASSERT_TRUE(fault) << text;
        EXPECT_EQ(simulator::faultText(*fault), QString::fromLatin1(text));
    }
    for (const char* text : {"", "nonsense", "silent:5", "slow:-1", "cut:1,", "slow:1,2",
                             "silent*0", "silent*x", "silent@x", "silent@1/2/3", "slow:99999999"})
    {
        EXPECT_FALSE(simulator::parseFault(QString::fromLatin1(text))) << text;
    }
    const auto slow = simulator::parseFault(QStringLiteral("SLOWx3"));
    ASSERT_TRUE(slow);
    EXPECT_EQ(slow->kind, simulator::FaultKind::Slow);
    EXPECT_EQ(slow->number, 1000) << "without an argument";
    EXPECT_EQ(slow->count, 3);
}

TEST(FaultOrderTest, OfAPathIsReadOrRefusedWithAReason)
{
    wxserver::Fault fault;
    QString reason;
    for (const char* mark : {"x", "*"}) {
        const QString text = QStringLiteral("/a*b=redirect:https://u@x/y=1") + QLatin1String(mark)
                             + QStringLiteral("12");
        ASSERT_TRUE(wxserver::parseFault(text, fault, reason));
        EXPECT_EQ(fault.kind, wxserver::FaultKind::Redirect);
        EXPECT_EQ(fault.pattern, QStringLiteral("/a*b"));
        EXPECT_EQ(fault.text, QStringLiteral("https://u@x/y=1"));
        EXPECT_EQ(fault.count, 12);
    }
    ASSERT_TRUE(wxserver::parseFault(QStringLiteral("*=stall-body"), fault, reason));
    EXPECT_EQ(wxserver::faultName(fault.kind), QStringLiteral("stall-body"));
    EXPECT_EQ(fault.count, -1);
    for (const char* const text :
         {"", "=stall", "stall", "*=staall", "*=status:abc", "*=status:99", "*=short:-1"})
    {
        reason.clear();
        EXPECT_FALSE(wxserver::parseFault(QString::fromLatin1(text), fault, reason)) << text;
        EXPECT_FALSE(reason.isEmpty());
    }
}

TEST(FaultOrderTest, PatternsStandForPaths)
{
    using faults::matchesPattern;
    EXPECT_TRUE(matchesPattern(QStringLiteral("/w*_*.gz"), QStringLiteral("/weather_noaa.gz")));
    EXPECT_FALSE(matchesPattern(QStringLiteral("/w*_*.gz"), QStringLiteral("/weather.gz")));
    EXPECT_FALSE(matchesPattern(QStringLiteral("/aa*aa"), QStringLiteral("/aaa")));
}

} // namespace
