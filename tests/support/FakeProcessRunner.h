#pragma once

#include "app/base/ProcessRunner.h"
#include "aviation/support/ScopedLock.h"

#include <QMutex>
#include <QStringList>

/// Starts nothing: it keeps the command lines and gives the result laid down beforehand.
class FakeProcessRunner final : public ProcessRunner
{
public:
    ProcessResult run(const QString& program, const QStringList& arguments, int /*timeoutMs*/,
                      const std::function<void(const QString&)>& output) override
    {
        {
            const aviation::ScopedLock lock(m_mutex);
            m_runs << program + QLatin1Char(' ') + arguments.join(QLatin1Char(' '));
        }
        for (const QString& chunk : outputs) {
            output(chunk);
        }
        return result;
    }
    bool startDetached(const QString& program, QString& error) override
    {
        started << program;
        error = startError;
        return startError.isEmpty();
    }
    bool open(const QString& path) override
    {
        opened << path;
        return true;
    }

    /// Program and arguments of each run, joined by blanks.
    QStringList runs() const
    {
        const aviation::ScopedLock lock(m_mutex);
        return m_runs;
    }

    // Set before a run that another thread makes.
    ProcessResult result{true, true, 0, QString()};
    QStringList outputs;
    QString startError;
    QStringList started;
    QStringList opened;

private:
    mutable QMutex m_mutex;
    QStringList m_runs; ///< guarded by m_mutex
};
