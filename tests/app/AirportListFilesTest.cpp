#include "app/AirportListFiles.h"

#include "nav/records/AirportTable.h"
#include "tests/support/Text.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using airportlist::Fault;
using airportlist::Kind;

TEST(AirportListFilesTest, RowsCommentsAndUnknownLinesSurvive)
{
    const QByteArray file = "# icao;name;country;elev;lat;lon;\n"
                            "# my own\n"
                            "ZZ1;Strip, North;Norway;12;60.5;10.25\n"
                            "\n"
                            "not a row\n"
                            "TOOLONG;a;b;1;2;3\n"
                            "AAAA;b;c;0;91;0\n"
                            "ZZ2;Pad;;;-1;-179.5;further;fields\n"
                            "# the end\n";
    const airportlist::List list = airportlist::parse(Kind::Airports, file);
    ASSERT_EQ(list.rows.size(), 2);
    EXPECT_EQ(list.rows.at(0).fields.join(QLatin1Char('|')),
              "ZZ1|Strip, North|Norway|12|60.5|10.25"_q);
    EXPECT_EQ(list.unreadable, 3);
    EXPECT_EQ(airportlist::bytesOf(Kind::Airports, list).toStdString(), file.toStdString());
}

TEST(AirportListFilesTest, OtherSystemsFilesComeOutAsTheReaderWantsThem)
{
    // No first line, CRLF, Latin-1, decimal comma, small letters, no line end.
    const airportlist::List list =
        airportlist::parse(Kind::Airports, "zz1 ;K\xf6ln;DE;300;50,87;7,14\r\nzz2;b;c;1;1;1");
    const QByteArray written = airportlist::bytesOf(Kind::Airports, list);
    EXPECT_EQ(written.toStdString(), "# icao;name;country;elev;lat;lon;\n"
                                     "ZZ1;K\xc3\xb6ln;DE;300;50.87;7.14\nZZ2;b;c;1;1;1\n");
    const QVector<QAirport> read = parseAdditionalAirports(written);
    ASSERT_EQ(read.size(), 2);
    EXPECT_DOUBLE_EQ(read.at(0).Lat, 50.87);

    const airportlist::List pairs =
        airportlist::parse(Kind::OldIcaos, "eddt, eddb\n#c\nABCD,ABCD\nA,B\n");
    EXPECT_EQ(airportlist::bytesOf(Kind::OldIcaos, pairs).toStdString(),
              "#old icao,new icao\nEDDT,EDDB\n#c\nABCD,ABCD\nA,B\n");
    EXPECT_EQ(pairs.unreadable, 2);
    EXPECT_TRUE(airportlist::parse(Kind::Airports, "").rows.isEmpty());
}

TEST(AirportListFilesTest, FieldsAreChecked)
{
    using namespace airportlist;
    const std::tuple<const char*, int, Fault> rows[] = {
        {"EDDF|a|b|364|50|8", kIcao, Fault::None},
        {"E1|a|b|0|1|1", kIcao, Fault::IcaoForm},
        {"ED-F|a|b|0|1|1", kIcao, Fault::IcaoForm},
        {"\xc3\x84\xc3\x84\xc3\x84|a|b|0|1|1", kIcao, Fault::IcaoForm},
        {"EDDF|a;b|b|0|1|1", kName, Fault::Separator},
        {"EDDF|a|b\nc|0|1|1", kCountry, Fault::Separator},
        {"EDDF|a|b|high|1|1", kElevation, Fault::ElevationForm},
        {"EDDF|a|b|30001|1|1", kElevation, Fault::ElevationForm},
        {"EDDF|a|b|0|90.01|1", kLatitude, Fault::LatitudeRange},
        {"EDDF|a|b|0|nan|1", kLatitude, Fault::LatitudeRange},
        {"EDDF|a|b|0||1", kLatitude, Fault::LatitudeRange},
        {"EDDF|a|b|0|1|-180.5", kLongitude, Fault::LongitudeRange},
        {"EDDF|a|b|0|0.0|0", kLongitude, Fault::NoPosition},
        {"EDDF|a|b|0|-90|180", kLongitude, Fault::None},
    };
    for (const auto& [row, field, fault] : rows) {
        const QStringList fields = QString::fromUtf8(row).split(QLatin1Char('|'));
        EXPECT_EQ(fieldFault(Kind::Airports, fields, field), fault) << row;
    }
    const QStringList same{"EDDT"_q, "EDDT"_q};
    EXPECT_EQ(airportlist::fieldFault(Kind::OldIcaos, same, airportlist::kNewIcao),
              Fault::SamePair);
}

TEST(AirportListFilesTest, FilesAreWrittenWhole)
{
    QTemporaryDir folder;
    const QString path = folder.filePath("new/airportsadd.dat"_q);
    QString error;
    EXPECT_TRUE(airportlist::read(Kind::Airports, path, error).rows.isEmpty());
    EXPECT_TRUE(error.isEmpty()) << "a missing file is an empty list";
    const airportlist::List list = airportlist::parse(Kind::Airports, "ZZ1;a;b;1;2;3\n");
    EXPECT_EQ(airportlist::write(Kind::Airports, path, list), QString());
    EXPECT_EQ(airportlist::read(Kind::Airports, path, error).rows.size(), 1);
    EXPECT_FALSE(airportlist::write(Kind::Airports, folder.path(), list).isEmpty());
}

} // namespace
