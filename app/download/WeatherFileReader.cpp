#include "app/download/WeatherFileReader.h"

#include "app/base/DownloadManager.h"
#include "app/base/Gzip.h"
#include "app/base/ReportFile.h"
#include "app/base/StopFlag.h"
#include "app/download/ServerAnswer.h"
#include "aviation/support/ScopedLock.h"
#include "weather/store/WeatherFile.h"

#include <QFile>
#include <QFileInfo>

#include <exception>
#include <utility>

using aviation::ScopedLock;

namespace {

/// Nothing is copied if there is nothing to copy; a failure is silent.
void copyOver(const QString& source, const QString& target)
{
    const QString half = target + QStringLiteral(".part");
    QFile::remove(half);
    if (QFileInfo(source).size() > 0 && QFile::copy(source, half)) {
        QFile::remove(target);
        QFile::rename(half, target);
    }
}

/// Why a file can't be inflated; empty if it was.
QString inflate(const WeatherFileRequest& request)
{
    QString reason;
    DownloadManager::gunzipFile(request.downloaded, request.inflated, &reason);
    if (reason.isEmpty()) {
        return {};
    }
    QFile file(request.downloaded);
    const QByteArray head =
        file.open(QIODevice::ReadOnly) ? file.read(serveranswer::kHeadSize) : QByteArray();
    const QString fault = serveranswer::fault(head);
    return fault.isEmpty() ? reason : fault;
}

/// The text of a packed file; empty if it can't be inflated.
QString inflatedText(const QString& fileName)
{
    QFile packed(fileName);
    return packed.open(QIODevice::ReadOnly) ? reportText(inflateZlibOrGzip(packed.readAll()).data)
                                            : QString();
}

void inflateAndRead(const WeatherFileRequest& request, WeatherFileResult& result)
{
    result.fault = inflate(request);
    if (result.fault.isEmpty()) {
        result.list.text = readReportFile(result.file).text;
    } else {
        // A full disk costs the file only.
        result.list.text = inflatedText(request.downloaded);
        result.unwritten = result.list.text.isEmpty() ? QString() : result.fault;
    }
    result.damaged = result.list.text.isEmpty();
    result.opened = !result.damaged || QFileInfo(result.file).isReadable();
}

void check(WeatherFileResult& result)
{
    result.damaged = aviation::weather::hasUnclosedBlock(result.list.text);
    if (result.damaged) {
        result.fault = QStringLiteral("a block has no end");
    } else {
        result.fault = serveranswer::fault(result.list.text.left(serveranswer::kHeadSize).toUtf8());
    }
}

WeatherFileResult readFile(const WeatherFileRequest& request, const StopFlag& stop)
{
    WeatherFileResult result;
    result.list.origin = request.origin;
    const bool isPacked = !request.inflated.isEmpty();
    result.file = isPacked ? request.inflated : request.downloaded;
    if (isPacked) {
        inflateAndRead(request, result);
    } else {
        ReportFileResult read = readReportFile(result.file);
        result.opened = read.ok();
        result.list.text = std::move(read.text);
    }
    if (!result.damaged && !stop.raised()) {
        check(result);
    }
    return result;
}

} // namespace

WeatherFileReader::WeatherFileReader(const StopFlag& stop, QObject* parent)
    : QThread(parent)
    , m_stop(stop)
{}

WeatherFileReader::~WeatherFileReader()
{
    wait();
    const ScopedLock lock(m_mutex);
}

void WeatherFileReader::read(const WeatherFileRequest& request)
{
    begin(request);
}

void WeatherFileReader::copy(const QString& file, const QString& target)
{
    WeatherFileRequest request;
    request.downloaded = file;
    request.copy = target;
    begin(request);
}

void WeatherFileReader::begin(const WeatherFileRequest& request)
{
    wait();
    {
        const ScopedLock lock(m_mutex);
        m_request = request;
    }
    start();
}

std::optional<WeatherFileResult> WeatherFileReader::takeResult()
{
    const ScopedLock lock(m_mutex);
    return std::exchange(m_result, std::nullopt);
}

void WeatherFileReader::run()
{
    WeatherFileRequest request;
    {
        const ScopedLock lock(m_mutex);
        request = m_request;
    }
    if (!request.copy.isEmpty()) {
        copyOver(request.downloaded, request.copy);
        return;
    }
    WeatherFileResult result;
    try {
        result = readFile(request, m_stop);
    } catch (const std::exception&) { // out of memory is all that can arrive here
        result.file = request.downloaded;
    }
    const ScopedLock lock(m_mutex);
    m_result = std::move(result);
}
