#pragma once

#include <QFile>
#include <QString>
#include <QStringList>

#include <functional>

/// The log file of the window program, begun anew with each run; its first line has the date (UTC),
/// since the others have the time only. Those of the last runs stay beside it as
/// "cirrilonv3.1.log", the newest, to "cirrilonv3.5.log". Every line is on disk when write returns.
/// A file that can't be written is skipped silently; where its folder is made only later (at the
/// very first start), the lines so far follow as soon as it exists. Main thread.
class LogFile
{
public:
    using Mirror = std::function<void(const QString& line)>;

    /// Tries to open "/cirrilonv3.log" below `folder`.
    explicit LogFile(const QString& folder);

    /// `text` may hold HTML and is written as it is.
    void write(const QString& text, int level);
    /// Sees each line, without a line end, as it goes to the file.
    void setMirror(Mirror mirror) { m_mirror = std::move(mirror); }
    QString path() const { return m_file.fileName(); }

    static QString levelName(int level);

    static constexpr int kEarlierRuns = 5;

private:
    bool open();
    void begin(bool kept);
    bool keepEarlier() const;
    QString earlierName(int run) const;
    void writeLine(const QString& line);

    QFile m_file;
    QStringList m_heldBack; ///< lines from before the file could be opened, bounded
    Mirror m_mirror;
};
