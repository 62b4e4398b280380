#pragma once

#include "app/base/ProcessRunner.h"

/// Outside programs of the host. Holds no state but the opener, so every thread may call it.
class HostProcessRunner final : public ProcessRunner
{
public:
    /// Opens a path with what the host has for it; false if it has nothing.
    using Opener = std::function<bool(const QString& path)>;

    /// The window program hands in the opener of its desktop. With an empty one nothing opens.
    explicit HostProcessRunner(Opener opener = {});

    ProcessResult run(const QString& program, const QStringList& arguments, int timeoutMs,
                      const std::function<void(const QString&)>& output) override;
    ProcessResult runUnlessStopped(const QString& program, const QStringList& arguments,
                                   int timeoutMs, const std::function<void(const QString&)>& output,
                                   const StopFlag& stop) override;
    bool startDetached(const QString& program, QString& error) override;
    bool open(const QString& path) override;

private:
    Opener m_opener;
};
