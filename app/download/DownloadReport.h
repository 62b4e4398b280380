#pragma once

#include "app/base/DownloadManager.h"
#include "app/base/OutsideText.h"
#include "app/base/Reporting.h"
#include "app/download/ServerAnswer.h"

/// What every download says in the same way.
namespace downloadreport {

/// Shows how far a download is, on whichever thread it lives.
inline void showProgress(DownloadManager& manager, const ProgressFunction& progress)
{
    QObject::connect(&manager, &DownloadManager::sigDownloadProgress, &manager, progress);
}

/// What a failed download is logged as: number, reason and what to do about it.
inline QString failureText(int error, const QString& reason)
{
    return QString::number(error) + QStringLiteral(", ") + outsidetext::forLog(reason.trimmed())
           + QStringLiteral(". ") + serveranswer::advice(error);
}

} // namespace downloadreport
