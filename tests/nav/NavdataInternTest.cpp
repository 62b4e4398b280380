#include "nav/NavdataIntern.h"

#include "tests/support/Text.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

TEST(NavdataInternTest, ReadsItsTableOrTellsWhyNot)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("airports"_q));
    NavdataIntern source(file.fileName());
    QStringList lines;
    QObject::connect(&source, &NavdataBase::sigDebugString, [&](const QString& text, int level) {
        lines << QString::number(level) + QLatin1Char(' ') + text.left(38);
    });
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("# icao;name\nEDDK;Cologne;Germany;302;50.9;7.1;0;0;0;0;1\n");
    file.close();
    EXPECT_TRUE(source.readAirports({}));
    EXPECT_TRUE(source.readAirportNames({})) << "the same, and the airports aren't doubled";
    EXPECT_EQ(source.airports().size(), 1);
    EXPECT_EQ(lines.mid(2),
              (QStringList{"1 (NavData) - reading airports"_q, "1 (NavData) - Airports: 1"_q}));
    lines.clear();
    EXPECT_FALSE(source.readAirports("none"_q));
    EXPECT_TRUE(source.airports().isEmpty());
    EXPECT_EQ(lines.last(), "3 (NavData) - can not read airport file."_q);
}

} // namespace
