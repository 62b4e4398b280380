#include "standins/wxserver/HttpAnswer.h"

#include "app/base/Gzip.h"
#include "standins/wxserver/Compress.h"

#include <QDateTime>
#include <QLocale>
#include <QUrl>

#include <algorithm>
#include <array>

namespace wxserver {

namespace {

constexpr char kTrickName[] = "../../../cirrilon-escaped.gz";
constexpr qint64 kMegabyte = 1024LL * 1024;
constexpr int kDamagedBytes = 16;

const char* reasonPhrase(int status)
{
    struct Row
    {
        int status;
        const char* phrase;
    };
    static constexpr std::array kRows{
        Row{200, "OK"},
        Row{302, "Found"},
        Row{304, "Not Modified"},
        Row{400, "Bad Request"},
        Row{403, "Forbidden"},
        Row{404, "Not Found"},
        Row{405, "Method Not Allowed"},
        Row{429, "Too Many Requests"},
        Row{431, "Request Header Fields Too Large"},
        Row{500, "Internal Server Error"},
        Row{502, "Bad Gateway"},
        Row{503, "Service Unavailable"},
        Row{504, "Gateway Timeout"},
    };
    const auto* const found = std::find_if(kRows.begin(), kRows.end(),
                                           [&](const Row& row) { return row.status == status; });
    return found == kRows.end() ? "Status" : found->phrase;
}

/// Leaves no line end in a header's value.
QByteArray headerValue(const QString& text)
{
    QByteArray value = text.toUtf8();
    value.replace('\r', "").replace('\n', "");
    return value;
}

void damage(QByteArray& body)
{
    const int from = std::max(0, body.size() / 2 - kDamagedBytes);
    for (int i = from; i < std::min(body.size(), from + 2 * kDamagedBytes); ++i) {
        body[i] = static_cast<char>(static_cast<unsigned char>(body[i]) ^ 0xA5U);
    }
}

void replaceBody(HttpAnswer& answer, const QByteArray& body, const char* type)
{
    answer.status = 200;
    answer.body = body;
    answer.type = type;
}

/// Faults of what is sent. False for those of how it is sent.
bool applyContentFault(HttpAnswer& answer, const HttpRequest& request, const Fault& fault)
{
    switch (fault.kind) {
    case FaultKind::Status:
        answer = plainAnswer(fault.number);
        return true;
    case FaultKind::Truncate:
        answer.body.truncate(answer.body.size() / 2);
        return true;
    case FaultKind::Damage:
        damage(answer.body);
        return true;
    case FaultKind::Empty:
        answer.body = shortened(answer.body, 0);
        return true;
    case FaultKind::Short:
        answer.body = shortened(answer.body, fault.number);
        return true;
    case FaultKind::Html:
        replaceBody(answer,
                    "<!DOCTYPE html>\n<html><head><title>Maintenance</title></head>\n"
                    "<body><h1>Be back soon</h1><p>The service is being looked after.</p>"
                    "</body></html>\n",
                    "text/html; charset=utf-8");
        return true;
    case FaultKind::Error:
        replaceBody(answer,
                    "#Error: "
                        + headerValue(fault.text.isEmpty() ? QStringLiteral("no data") : fault.text)
                        + '\n',
                    "text/plain; charset=utf-8");
        return true;
    case FaultKind::Redirect:
        answer = plainAnswer(302);
        answer.headers.append(
            {"Location", headerValue(fault.text.isEmpty() ? QStringLiteral("/moved") + request.path
                                                          : fault.text)});
        return true;
    case FaultKind::Bomb:
        replaceBody(answer, gzipBomb(kMaxInflatedBytes + kMegabyte), "application/gzip");
        return true;
    case FaultKind::Name:
        answer.headers.append(
            {"Content-Disposition",
             "attachment; filename=\""
                 + headerValue(fault.text.isEmpty() ? QString::fromLatin1(kTrickName) : fault.text)
                 + '"'});
        return true;
    default:
        return false;
    }
}

void applyDeliveryFault(HttpAnswer& answer, const Fault& fault)
{
    switch (fault.kind) {
    case FaultKind::Stall:
        answer.delivery = Delivery::Nothing;
        break;
    case FaultKind::StallBody:
        answer.delivery = Delivery::Half;
        break;
    case FaultKind::Trickle:
        answer.delivery = Delivery::Trickle;
        answer.bytesPerTick = std::max(1, fault.number);
        break;
    case FaultKind::WrongLength:
        answer.delivery = Delivery::CloseEnd;
        answer.extraLength = fault.number;
        break;
    case FaultKind::Cut:
        answer.delivery = Delivery::CloseHalf;
        break;
    case FaultKind::Endless:
        answer.delivery = Delivery::Endless;
        answer.endlessBytes = fault.number * kMegabyte;
        break;
    default:
        break;
    }
}

} // namespace

HttpAnswer answerFor(const Document& document)
{
    if (!document.found) {
        return plainAnswer(404);
    }
    HttpAnswer answer;
    answer.type = document.type;
    answer.body = document.body;
    return answer;
}

HttpAnswer plainAnswer(int status)
{
    HttpAnswer answer;
    answer.status = status;
    answer.type = "text/plain; charset=us-ascii";
    answer.body = QByteArray::number(status) + ' ' + reasonPhrase(status) + '\n';
    return answer;
}

void applyFault(HttpAnswer& answer, const HttpRequest& request, const Fault& fault)
{
    if (!applyContentFault(answer, request, fault)) {
        applyDeliveryFault(answer, fault);
    }
}

QByteArray answerHead(const HttpAnswer& answer, bool keepAlive, aviation::Clock::UtcTime now)
{
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(now.time_since_epoch().count(), Qt::UTC);
    QByteArray head = "HTTP/1.1 " + QByteArray::number(answer.status) + ' '
                      + reasonPhrase(answer.status) + "\r\n";
    head +=
        "Date: "
        + QLocale::c().toString(time, QStringLiteral("ddd, dd MMM yyyy hh:mm:ss 'GMT'")).toLatin1()
        + "\r\n";
    head += "Server: cirrilon-wxserver\r\nCache-Control: no-store\r\n";
    head += "Content-Type: " + answer.type + "\r\n";
    if (answer.delivery != Delivery::Endless) {
        head += "Content-Length: " + QByteArray::number(answer.body.size() + answer.extraLength)
                + "\r\n";
    }
    for (const auto& [name, value] : answer.headers) {
        head += name + ": " + value + "\r\n";
    }
    return head + "Connection: " + (keepAlive ? "keep-alive" : "close") + "\r\n\r\n";
}

} // namespace wxserver
