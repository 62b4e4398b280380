#pragma once

#include "app/base/DownloadManager.h"
#include "app/base/UserDialogs.h"

#include <QMessageBox>
#include <QObject>
#include <QPointer>

#include <vector>

class QWidget;

/// Message boxes over the main window. Warnings don't wait: their boxes stand beside the window
/// until they are closed, one after the other, each text once, and a newer text of the same title
/// takes the place of the older one. Off the main thread they are queued. Created and destroyed on
/// the main thread.
class WindowDialogs : public QObject, public UserDialogs
{
    Q_OBJECT
public:
    /// `parent` is the window that the boxes belong to; it outlives this, as do the settings and
    /// the stop flag of `downloads`, by which an update is fetched.
    WindowDialogs(QWidget* parent, DownloadContext downloads);
    ~WindowDialogs() override;

    void warning(const QString& title, const QString& text) override;
    void critical(const QString& title, const QString& text) override;
    void farewell(const QString& title, const QString& text) override;
    bool question(const QString& title, const QString& text) override;
    QString offerUpdate(const UpdateOffer& offer) override;

private:
    struct Message
    {
        QMessageBox::Icon icon = QMessageBox::Warning;
        QString title;
        QString text;
    };
    void show(const Message& message);
    void take(const Message& message);
    void open(const Message& message);
    void openNext();

    QWidget* m_parent;
    DownloadContext m_downloads;
    QPointer<QMessageBox> m_box;
    std::vector<Message> m_waiting; ///< until the box is closed
};
