#include "app/base/ReportFile.h"

#include "tests/app/base/SettingsFixture.h"

#include <QTemporaryFile>

#include <zlib.h>

namespace {

QByteArray packedForm(const QByteArray& plain)
{
    QTemporaryFile file;
    EXPECT_TRUE(file.open());
    gzFile packed = gzopen(qPrintable(file.fileName()), "wb9");
    EXPECT_EQ(gzwrite(packed, plain.constData(), static_cast<unsigned>(plain.size())),
              plain.size());
    gzclose(packed);
    return file.readAll();
}

TEST(GzipTest, InflatesMembersAndIgnoresPadding)
{
    QByteArray plain;
    for (int i = 0; i < 100000; ++i) {
        plain += QByteArray::number(i * 7919) + '\n';
    }
    EXPECT_EQ(inflateGzip(packedForm(plain)).data, plain);
    EXPECT_EQ(inflateGzip(packedForm("one ") + packedForm("") + packedForm("two")).data, "one two");
    EXPECT_EQ(inflateGzip(packedForm("one") + QByteArray(512, '\0')).data, "one");
    EXPECT_TRUE(inflateGzip(packedForm("")).ok());
}

TEST(GzipTest, SaysWhatIsWrong)
{
    const QByteArray packed = packedForm("EDDF 011200Z 27010KT CAVOK 20/10 Q1013");
    for (int size = 0; size < packed.size(); ++size) {
        const GzipResult cut = inflateGzip(packed.left(size));
        ASSERT_TRUE(cut.error.startsWith("truncated"_q)) << size;
        ASSERT_TRUE(cut.data.isEmpty());
    }
    QByteArray wrongSum = packed;
    wrongSum[packed.size() - 5] = static_cast<char>(~packed[packed.size() - 5]);
    for (const QByteArray& bad :
         {wrongSum, QByteArray("<html></html>"), packed + packed.left(2) + "xx"})
    {
        const GzipResult result = inflateGzip(bad);
        EXPECT_TRUE(result.error.startsWith("damaged"_q)) << result.error.toStdString();
    }
}

TEST(GzipTest, StopsABombAtTheLimit)
{
    const QByteArray bomb = packedForm(QByteArray(8 << 20, '0'));
    ASSERT_LT(bomb.size(), 64 << 10);
    const GzipResult result = inflateGzip(bomb, 1 << 20);
    EXPECT_TRUE(result.error.startsWith("too large"_q)) << result.error.toStdString();
    EXPECT_TRUE(result.data.isEmpty());
    EXPECT_EQ(inflateGzip(bomb, 8 << 20).data.size(), 8 << 20);
    EXPECT_FALSE(inflateGzip(bomb, (8 << 20) - 1).ok());
    EXPECT_FALSE(inflateGzip(packedForm("x"), 0).ok());
}

using ReportFileTest = SettingsFixture;

TEST_F(ReportFileTest, ReplacesInvalidBytesOneByOne)
{
    const QByteArray bytes("\xEF\xBB\xBF"
                           "a\xff\xfe"
                           "b\0c\xC3\xA4\xE2\x82",
                           13);
    const QString expected = "a\uFFFD\uFFFDb"_q + QChar(0) + "c\u00e4\uFFFD\uFFFD"_q;
    write(path("r.txt"), bytes);
    write(path("r.txt.gz"), packedForm(bytes));
    EXPECT_EQ(readReportFile(path("r.txt")).text, expected);
    EXPECT_EQ(readReportFile(path("r.txt.gz")).text, expected);
}

TEST_F(ReportFileTest, LineEndsOfOtherSystemsBecomeLineFeeds)
{
    const std::pair<QByteArray, QString> rows[] = {{"a\r\nb\r\n\r\nc", "a\nb\n\nc"_q},
                                                   {"\r\n", "\n"_q},
                                                   {"a\rb\r\r\nc\n\rd\r", "a\rb\r\nc\n\rd\r"_q}};
    for (const auto& [bytes, expected] : rows) {
        write(path("r.txt"), bytes);
        EXPECT_EQ(readReportFile(path("r.txt")).text, expected) << bytes.constData();
    }
}

TEST_F(ReportFileTest, NamesTheFileAndTheReason)
{
    write(path("big.txt"), QByteArray(1001, 'x'));
    write(path("cut.gz"), packedForm("x").left(12));
    write(path("bomb.gz"), packedForm(QByteArray(1001, 'x')));
    const std::pair<const char*, const char*> rows[] = {{"none.txt", "no such file"},
                                                        {".", "is a folder"},
                                                        {"big.txt", "too large"},
                                                        {"cut.gz", "truncated"},
                                                        {"bomb.gz", "too large"}};
    for (const auto& [name, reason] : rows) {
        const ReportFileResult result = readReportFile(path(name), 1000);
        EXPECT_TRUE(result.error.startsWith(path(name) + ": "_q + QLatin1String(reason)))
            << result.error.toStdString();
        EXPECT_TRUE(result.text.isEmpty());
    }
    EXPECT_EQ(readReportFile(path("big.txt"), 1001).text.size(), 1001);
}

} // namespace
