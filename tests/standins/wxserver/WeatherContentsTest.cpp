#include "standins/wxserver/WeatherContents.h"

#include "app/base/Gzip.h"
#include "aviation/Grib.h"
#include "tests/support/FakeClock.h"

#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace {

using namespace wxserver;

class WeatherContentsTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        s_contents = new WeatherContents;
        QString reason;
        ASSERT_TRUE(s_contents->load(QString(), reason)) << reason.toStdString();
    }
    static void TearDownTestSuite() { delete s_contents; }

    Document get(const QString& target) const
    {
        QByteArray text = "GET " + target.toUtf8() + " HTTP/1.1\r\n\r\n";
        HttpRequest request;
        EXPECT_EQ(takeRequest(text, request), HttpParse::Complete);
        return s_contents->document(request, m_clock.NowUtc());
    }
    QByteArray text(const char* target) const
    {
        const Document document = get(QString::fromLatin1(target));
        EXPECT_TRUE(document.found) << target;
        const GzipResult inflated = inflateGzip(document.body);
        return inflated.ok() ? inflated.data : document.body;
    }

    static inline WeatherContents* s_contents = nullptr;
    FakeClock m_clock{2024, 3, 1, 0, 5};
};

TEST_F(WeatherContentsTest, FollowsTheClockFromHourToHour)
{
    const QByteArray before = text("/external/%Y/metar.txt");
    m_clock.advance(std::chrono::minutes(4));
    EXPECT_EQ(text("/external/%Y/metar.txt"), before);
    m_clock.advance(std::chrono::minutes(2));
    const QByteArray after = text("/external/%Y/metar.txt");
    EXPECT_NE(after, before);
    EXPECT_TRUE(before.startsWith("2024/02/29 23:")) << before.left(20).toStdString();
    EXPECT_TRUE(after.startsWith("2024/03/01 00:")) << after.left(20).toStdString();
    EXPECT_TRUE(text("/external/synop.txt").startsWith("AAXX 01001 15015 "));
}

TEST_F(WeatherContentsTest, UpperAirIsThatOfThePointsAroundAndAnErrorOutside)
{
    const QByteArrayList single =
        text("/get_gribv3.php?lat=43.20&lon=-98.90&mode=single").split('\n');
    ASSERT_EQ(single.size(), 3);
    EXPECT_EQ(single[0], QByteArray("# TIME:1709251200"));
    aviation::weather::Grib grib(QString::fromLatin1(single[1]).toStdWString());
    ASSERT_EQ(grib.Decode(), 0);
    EXPECT_DOUBLE_EQ(grib.latitude(), 43.0);
    EXPECT_DOUBLE_EQ(grib.longitude(), -99.0);
    EXPECT_TRUE(single[1].startsWith("GRIB 01001 24030 "));

    const QByteArrayList multi =
        text("/get_gribv3.php?lat=43.20&lon=261.10&mode=multi").split('\n');
    EXPECT_EQ(multi.size(), 2 + 25);
    EXPECT_EQ(multi[1], single[1]);
    for (const char* const target : {"/get_gribv3.php?lat=50.05&lon=8.57&mode=multi",
                                     "/get_gribv3.php?lat=nan&lon=8&mode=multi", "/get_gribv3.php",
                                     "/get_gribv3.php?lat=1e300&lon=-1e300"})
    {
        EXPECT_TRUE(text(target).startsWith("#Error: ")) << target;
    }
}

TEST_F(WeatherContentsTest, HistoryListNamesFilesThatAreThere)
{
    QXmlStreamReader xml(text("/cirrilon_v3_history.php?type=3"));
    QString name;
    int files = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == QLatin1String("filename")) {
            name = xml.readElementText();
        } else if (xml.isStartElement() && xml.name() == QLatin1String("folder")) {
            const QString file = QStringLiteral("/history/%1/%2").arg(xml.readElementText(), name);
            EXPECT_TRUE(files++ % 72 > 2 || get(file).found)
                << "first and last hour: " << file.toStdString();
        }
    }
    EXPECT_FALSE(xml.hasError());
    EXPECT_EQ(files, 25 * 3);
    EXPECT_TRUE(text("/history/20240229/synop_4_2024022912.gz").startsWith("AAXX 29121 "));
    EXPECT_FALSE(get(QStringLiteral("/history/x/metar_1_2024030101.gz")).found); // to come
    EXPECT_FALSE(get(QStringLiteral("/history/x/metar_1_2001010112.gz")).found);
}

/// Octets from `at`, high byte first.
quint64 number(const QByteArray& bytes, int at, int octets)
{
    quint64 value = 0;
    for (int i = at; i < at + octets; ++i) {
        value = value << 8 | static_cast<unsigned char>(bytes[i]);
    }
    return value;
}

TEST_F(WeatherContentsTest, WindFileIsARowOfMessagesThatHoldTheFieldsWind)
{
    QByteArray file = text("/global_wind.grib");
    int messages = 0;
    double u = 0.0;
    for (; !file.isEmpty(); ++messages) {
        ASSERT_EQ(file.left(4), QByteArray("GRIB"));
        const auto length = static_cast<int>(number(file, 8, 8));
        ASSERT_EQ(file.mid(length - 4, 4), QByteArray("7777"));
        int at = 16;
        int section = 0;
        for (const int wanted : {1, 3, 4, 5, 6, 7}) {
            section = at;
            ASSERT_EQ(number(file, at + 4, 1), quint64(wanted));
            at += static_cast<int>(number(file, at, 4));
            if (messages == 0 && wanted == 5) {
                const auto bits = static_cast<quint32>(number(file, section + 11, 4));
                float reference = 0.0F;
                std::memcpy(&reference, &bits, sizeof reference);
                const auto scale = static_cast<int>(number(file, section + 15, 2));
                const int power = scale & 0x8000 ? -(scale & 0x7FFF) : scale;
                // The first point, 65 N 150 W: 112 degrees, 33 knots at 300 hPa.
                u = static_cast<double>(reference)
                    + static_cast<double>(number(file, at + 6 + 5, 2)) * std::exp2(power);
            }
        }
        ASSERT_EQ(at, length - 4);
        file.remove(0, length);
    }
    EXPECT_EQ(messages, 6);
    EXPECT_NEAR(u, -33 * 1852.0 / 3600.0 * std::sin(112 * 3.14159265 / 180), 0.01);
    EXPECT_TRUE(text("/global_turbulence.grib").endsWith("7777"));
}

TEST_F(WeatherContentsTest, PathsThatClimbFindNoOtherFiles)
{
    EXPECT_FALSE(get(QStringLiteral("/../../../etc/passwd")).found);
    EXPECT_FALSE(get(QStringLiteral("/..%5C..%5Cweather.wx")).found);
    EXPECT_TRUE(get(QStringLiteral("/..%2F..%2Fweather_noaa.gz")).found);
    EXPECT_TRUE(get(QStringLiteral("//global_wind.grib")).found);
    EXPECT_FALSE(get(QStringLiteral("/")).found);
}

} // namespace
