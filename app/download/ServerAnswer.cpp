#include "app/download/ServerAnswer.h"

#include <QNetworkReply>
#include <QStringView>

namespace serveranswer {

namespace {

QString firstLine(const QByteArray& head)
{
    return QString::fromUtf8(head.left(kHeadSize)).section(QLatin1Char('\n'), 0, 0);
}

} // namespace

Fault faultKind(const QByteArray& head)
{
    const QByteArray start = head.left(kHeadSize).trimmed().toLower();
    if (start.isEmpty()) {
        return Fault::Empty;
    }
    const bool page = start.startsWith("<!doctype") || start.startsWith("<html")
                      || start.startsWith("<head") || start.startsWith("<body")
                      || start.startsWith("<?xml") || start.contains("<html");
    if (page) {
        return Fault::WebPage;
    }
    return isErrorText(firstLine(head)) ? Fault::ServerError : Fault::None;
}

QString fault(const QByteArray& head)
{
    switch (faultKind(head)) {
    case Fault::Empty:
        return QStringLiteral("it is empty");
    case Fault::WebPage:
        return QStringLiteral("it is a web page");
    case Fault::ServerError:
        return QStringLiteral("the server says ") + firstLine(head).trimmed();
    case Fault::None:
        break;
    }
    return {};
}

bool isErrorText(const QString& text)
{
    const int end = text.indexOf(QLatin1Char('\n'));
    return QStringView(text).left(end < 0 ? text.size() : end).contains(QLatin1String("Error"));
}

QString advice(int networkError)
{
    switch (networkError) {
    case QNetworkReply::OperationCanceledError:
        return {};
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::TimeoutError:
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::UnknownNetworkError:
        return QStringLiteral("Check the internet connection and the firewall.");
    case QNetworkReply::ProtocolUnknownError:
        return QStringLiteral("Correct the address in the settings.");
    case kFileError:
        return QStringLiteral(
            "Check that the temporary folder can be written and the disk isn't full.");
    default:
        return QStringLiteral(
            "If it stays so, choose another weather source or server in the settings.");
    }
}

} // namespace serveranswer
