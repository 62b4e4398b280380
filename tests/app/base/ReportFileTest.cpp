#include "app/base/ReportFile.h"

#include "tests/app/base/SettingsFixture.h"

#include <zlib.h>

#include <algorithm>

namespace {

QByteArray Packed(const QByteArray& plain)
{
    z_stream stream{};
    EXPECT_EQ(deflateInit2(&stream, 9, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY), Z_OK);
    QByteArray packed(static_cast<int>(deflateBound(&stream, static_cast<uLong>(plain.size()))),
                      '\0');
    QByteArray input = plain;
    stream.next_in = reinterpret_cast<Bytef*>(input.data());
    stream.avail_in = static_cast<uInt>(input.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    packed.truncate(static_cast<int>(stream.total_out));
    deflateEnd(&stream);
    return packed;
}

TEST(Gzip, InflatesMembersAndIgnoresPadding)
{
    QByteArray plain;
    for (int i = 0; i < 100000; ++i) {
        plain += QByteArray::number(i * 7919) + '\n';
    }
    EXPECT_EQ(inflateGzip(Packed(plain)).data, plain);
    EXPECT_EQ(inflateGzip(Packed("one ") + Packed("") + Packed("two")).data, "one two");
    EXPECT_EQ(inflateGzip(Packed("one") + QByteArray(512, '\0')).data, "one");
    EXPECT_TRUE(inflateGzip(Packed("")).ok());
}

TEST(Gzip, SaysWhatIsWrong)
{
    const QByteArray packed = Packed("EDDF 011200Z 27010KT CAVOK 20/10 Q1013");
    for (int size = 0; size < packed.size(); ++size) {
        const GzipResult cut = inflateGzip(packed.left(size));
        ASSERT_TRUE(cut.error.startsWith(QLatin1String("truncated"))) << size;
        ASSERT_TRUE(cut.data.isEmpty());
    }
    QByteArray wrongSum = packed;
    wrongSum[packed.size() - 5] = static_cast<char>(~packed[packed.size() - 5]);
    for (const QByteArray& bad :
         {wrongSum, QByteArray("<html></html>"), packed + packed.left(2) + "xx"})
    {
        const GzipResult result = inflateGzip(bad);
        EXPECT_TRUE(result.error.startsWith(QLatin1String("damaged")))
            << result.error.toStdString();
    }
}

TEST(Gzip, StopsABombAtTheLimit)
{
    const QByteArray bomb = Packed(QByteArray(8 << 20, '0'));
    ASSERT_LT(bomb.size(), 64 << 10);
    const GzipResult result = inflateGzip(bomb, 1 << 20);
    EXPECT_TRUE(result.error.startsWith(QLatin1String("too large"))) << result.error.toStdString();
    EXPECT_TRUE(result.data.isEmpty());
    EXPECT_EQ(inflateGzip(bomb, 8 << 20).data.size(), 8 << 20);
    EXPECT_FALSE(inflateGzip(bomb, (8 << 20) - 1).ok());
    EXPECT_FALSE(inflateGzip(Packed("x"), 0).ok());
}

class ReportFileTest : public SettingsFixture
{};

TEST_F(ReportFileTest, ReplacesInvalidBytesOneByOne)
{
    const QByteArray bytes("\xEF\xBB\xBF"
                           "a\xff\xfe"
                           "b\0c\xC3\xA4\xE2\x82",
                           13);
    const QString expected = QStringLiteral("a\uFFFD\uFFFD"
                                            "b")
                             + QChar(0) + QStringLiteral("c\u00e4\uFFFD\uFFFD");
    write(path("r.txt"), bytes);
    write(path("r.txt.gz"), Packed(bytes));
    EXPECT_EQ(readReportFile(path("r.txt")).text, expected);
    EXPECT_EQ(readReportFile(path("r.txt.gz")).text, expected);
}

TEST_F(ReportFileTest, NamesTheFileAndTheReason)
{
    write(path("big.txt"), QByteArray(1001, 'x'));
    write(path("cut.gz"), Packed("x").left(12));
    write(path("bomb.gz"), Packed(QByteArray(1001, 'x')));
    const std::pair<const char*, const char*> rows[] = {{"none.txt", "no such file"},
                                                        {".", "is a folder"},
                                                        {"big.txt", "too large"},
                                                        {"cut.gz", "truncated"},
                                                        {"bomb.gz", "too large"}};
    for (const auto& [name, reason] : rows) {
        const ReportFileResult result = readReportFile(path(name), 1000);
        EXPECT_TRUE(
            result.error.startsWith(path(name) + QLatin1String(": ") + QLatin1String(reason)))
            << result.error.toStdString();
        EXPECT_TRUE(result.text.isEmpty());
    }
    EXPECT_EQ(readReportFile(path("big.txt"), 1001).text.size(), 1001);
}

} // namespace
