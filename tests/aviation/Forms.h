#pragma once

#include "aviation/WeatherBase.h"
#include "tests/support/ReportLines.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>

/// One line of what the kinds of surface report have in common.
inline std::string SurfaceSummary(const aviation::weather::WeatherBase& report)
{
    std::ostringstream text;
    const aviation::weather::Wind wind = report.wind();
    text << std::setprecision(9) << "status " << report.status() << ", wind " << wind.Dir << "/"
         << wind.Speed << " gust " << wind.Gust << (report.windSeen() ? "" : " unseen")
         << ", visibility " << report.visibility() << (report.visibilitySeen() ? "" : " unseen");
    for (const aviation::weather::Cloud& cloud : report.clouds()) {
        text << ", cloud " << int{cloud.coverage} << " at " << cloud.base << " (" << cloud.altitude
             << ") of " << int{cloud.type};
    }
    text << (report.cloudsSeen() ? "" : ", clouds unseen") << ", air " << report.temperature()
         << "/" << report.dewPoint() << ", QNH " << report.qnh();
    return text.str();
}

/// Each line of the file holds a report and behind " => " what it is decoded to.
template <class Report, class Summary>
void ExpectForms(const std::string& path, Summary summary)
{
    const std::vector<std::wstring> lines = ReportLines(CIRRILON_TEST_DATA + path);
    ASSERT_FALSE(lines.empty());
    for (const std::wstring& line : lines) {
        const std::size_t end = line.find(L" => ");
        ASSERT_NE(end, std::wstring::npos);
        Report report(line.substr(0, end));
        report.setElevation(300);
        static_cast<void>(report.Decode());
        const std::string text = summary(report);
        EXPECT_EQ(std::wstring(text.begin(), text.end()), line.substr(end + 4))
            << testing::PrintToString(line);
    }
}
