#pragma once

#include "standins/wxserver/Fault.h"
#include "standins/wxserver/WeatherContents.h"

#include <QByteArray>
#include <QList>
#include <QPair>

namespace wxserver {

/// How an answer goes out.
enum class Delivery
{
    Whole,
    Nothing,   ///< not a byte, the connection stays open
    Half,      ///< head and half of the body, the connection stays open
    Trickle,   ///< `bytesPerTick` every tenth of a second
    CloseHalf, ///< head and half of the body, then closed
    CloseEnd,  ///< closed after the body although more was announced
    Endless    ///< `endlessBytes` of filling instead of the body, no length announced
};

/// An answer before it is written.
struct HttpAnswer
{
    int status = 200;
    QByteArray type;
    QByteArray body;
    QList<QPair<QByteArray, QByteArray>> headers; ///< beside the usual ones
    Delivery delivery = Delivery::Whole;
    qint64 extraLength = 0; ///< added to the announced length
    int bytesPerTick = 0;
    qint64 endlessBytes = 0;
};

/// The answer to a request when nothing is wrong: the document or 404.
HttpAnswer answerFor(const Document& document);
/// An answer of one line of text, for errors.
HttpAnswer plainAnswer(int status);
/// Makes the answer what the fault wants.
void applyFault(HttpAnswer& answer, const HttpRequest& request, const Fault& fault);
/// Status line and headers with the empty line at the end; `now` for the header "Date".
QByteArray answerHead(const HttpAnswer& answer, bool keepAlive, aviation::Clock::UtcTime now);

} // namespace wxserver
