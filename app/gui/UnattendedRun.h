#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

class CirrilonView;

/// Runs the program without anybody in front of it: the log goes to standard output as well, and
/// when the first weather has been set in the simulator a picture of the window is saved and the
/// program ends. The last two lines tell the number of stations and the picture's file. Main
/// thread; `view` outlives it.
class UnattendedRun : public QObject
{
    Q_OBJECT
public:
    /// `pictureFile`: a PNG file, replaced.
    UnattendedRun(CirrilonView& view, const QString& pictureFile);

    /// Writes a line to standard output at once; the window's log mirror.
    static void print(const QString& line);

    static constexpr int kLimitMs = 120000; ///< gives up then, with exit status 1

private:
    void jobFinished(int jobId, int error);
    int stationsOfLastSet(int jobId) const;
    void takePicture();
    void giveUp();
    void finish(int status);

    CirrilonView& m_view;
    QString m_pictureFile;
    QTimer m_limit;
    qlonglong m_lastTotal = 1; ///< of the weather worker's progress
    int m_stations = -1;       ///< -1 while no weather has been set
};
