#pragma once

#include "app/base/DownloadManager.h"
#include "app/base/UserDialogs.h"

#include <QMessageBox>
#include <QObject>
#include <QPointer>

#include <vector>

class QWidget;

/// Message boxes over the main window. Warnings don't wait: their boxes stand beside the window
/// until they are closed, each text once, and off the main thread they are queued. Created and
/// destroyed on the main thread.
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
    void show(QMessageBox::Icon icon, const QString& title, const QString& text);
    void open(QMessageBox::Icon icon, const QString& title, const QString& text);

    QWidget* m_parent;
    DownloadContext m_downloads;
    std::vector<QPointer<QMessageBox>> m_boxes;
};
