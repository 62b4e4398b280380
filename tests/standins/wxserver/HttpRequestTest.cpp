#include "standins/wxserver/HttpRequest.h"

#include <gtest/gtest.h>

namespace {

using namespace wxserver;

TEST(HttpRequest, IsTakenInAnyPiecesAndLeavesWhatFollows)
{
    const QByteArray first = "GET /get_gribv3.php?lat=43.20&lon=-98.90&mode=a%26b HTTP/1.1\r\n"
                             "Host: a\r\nContent-Length: 3\r\n\r\nxyz";
    QByteArray buffer;
    HttpRequest request;
    for (int i = 0; i < first.size() - 1; ++i) {
        buffer += first[i];
        ASSERT_EQ(takeRequest(buffer, request), HttpParse::Incomplete) << i;
    }
    buffer += first.right(1) + "HEAD http://host/a%20b HTTP/1.0\r\n\r\n";
    ASSERT_EQ(takeRequest(buffer, request), HttpParse::Complete);
    EXPECT_EQ(request.path, QStringLiteral("/get_gribv3.php"));
    EXPECT_EQ(request.parameter(QStringLiteral("lon")), QStringLiteral("-98.90"));
    EXPECT_EQ(request.parameter(QStringLiteral("mode")), QStringLiteral("a&b"));
    EXPECT_TRUE(request.keepAlive);
    ASSERT_EQ(takeRequest(buffer, request), HttpParse::Complete);
    EXPECT_TRUE(request.isHead());
    EXPECT_EQ(request.path, QStringLiteral("/a b"));
    EXPECT_FALSE(request.keepAlive);
    EXPECT_TRUE(buffer.isEmpty());
}

TEST(HttpRequest, OfAHostilePeerIsRefused)
{
    const auto parse = [](QByteArray text) {
        HttpRequest request;
        return takeRequest(text, request);
    };
    for (const char* const text :
         {"\r\n\r\n", "GET /\r\n\r\n", "GET / HTTP/2.0\r\n\r\n", "GET  / HTTP/1.1\r\n\r\n",
          "GET x HTTP/1.1\r\n\r\n", "GET /\x01 HTTP/1.1\r\n\r\n",
          "GET / HTTP/1.1\r\nno colon\r\n\r\n", "GET / HTTP/1.1\r\nContent-Length: -1\r\n\r\n",
          "GET / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n"})
    {
        EXPECT_EQ(parse(text), HttpParse::BadRequest) << text;
    }
    EXPECT_EQ(parse(QByteArray(kMaxRequestBytes + 1, 'a')), HttpParse::TooLarge);
    EXPECT_EQ(parse("GET / HTTP/1.1\r\nContent-Length: 99999999999\r\n\r\n"), HttpParse::TooLarge);
}

} // namespace
