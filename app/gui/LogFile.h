#pragma once

#include <QFile>
#include <QString>
#include <QStringList>

#include <functional>

/// The log file of the window program, begun anew with each run. Every line is on disk when write
/// returns. A file that can't be written is skipped silently; where its folder is made only later
/// (at the very first start), the lines so far follow as soon as it exists. Main thread.
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

private:
    bool open();
    void writeLine(const QString& line);

    QFile m_file;
    QStringList m_heldBack; ///< lines from before the file could be opened, bounded
    Mirror m_mirror;
};
