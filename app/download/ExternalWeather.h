#pragma once

#include "app/base/DownloadManager.h"
#include "app/base/Reporting.h"
#include "app/download/WeatherList.h"

#include <QString>

#include <optional>

class Settings;

/// Fetches weather from the user's own addresses. Main thread; owned by WeatherDownload.
class ExternalWeather
{
public:
    /// Settings and the stop flag of the context, which isn't null here, outlive it.
    ExternalWeather(const Settings& settings, DownloadContext context, Reporting reporting);

    /// The event loop runs on while the texts are fetched. A list without a text if nothing
    /// arrived.
    WeatherList fetch();

private:
    std::optional<QString> fetchText(const QString& kind, const QString& urlTemplate, int shortest);

    const Settings& m_settings;
    const DownloadContext m_context;
    const Reporting m_reporting;
};
