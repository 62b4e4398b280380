#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

class Controller;
class QWidget;

/// Watches a run of the program without a person at the screen: the log goes to standard output as
/// well, and when the first weather has been set in the simulator a picture of the window is saved
/// and the program ends. The last two lines are the number of stations and the picture's file. Main
/// thread.
class UnattendedRun : public QObject
{
    Q_OBJECT
public:
    /// `pictureFile`: a PNG file, replaced.
    explicit UnattendedRun(const QString& pictureFile);

    /// Writes a line of the log to standard output at once; nothing any more when the run is over.
    void printLog(const QString& line);
    /// From now on. Both outlive the event loop.
    void watch(QWidget& window, Controller& controller);

    static constexpr int kLimitMs = 120000; ///< gives up then, with exit status 1

private:
    void jobFinished(int jobId, int error);
    void takePicture();
    void giveUp();
    void finish(int status);

    QString m_pictureFile;
    QTimer m_limit;
    QWidget* m_window = nullptr;
    Controller* m_controller = nullptr;
    qlonglong m_prepared = 0; ///< stations of the weather worker's last job with any
    bool m_isSet = false;
    bool m_isOver = false;
};
