#pragma once

#include "app/base/DownloadManager.h"
#include "app/base/UserDialogs.h"

#include <QDialog>
#include <QPointer>
#include <QString>

class NoteLabel;
class QProgressBar;
class QPushButton;
class QUrl;

/// Shows an update and offers to download its installer, which goes into the temporary folder, or
/// to open the page to download by hand. Only http and https addresses are taken. Accepted means
/// that installerPath is complete. Main thread.
class DlgUpdater : public QDialog
{
    Q_OBJECT
public:
    /// Settings and stop flag of the context outlive the dialog; its dialogs aren't used.
    DlgUpdater(const UpdateOffer& offer, DownloadContext context, QWidget* parent = nullptr);
    ~DlgUpdater() override;

    /// Path of the downloaded installer; empty if there is none.
    QString installerPath() const { return m_installerPath; }
    /// Ends a download that is under way; closes otherwise.
    void reject() override;

private:
    void buildLayout();
    QString headline() const;
    QString infoText() const;
    void download();
    void cancelDownload();
    void openPage();
    void onProgress(qlonglong value, qlonglong total);
    void onError(int code, const QString& text);
    void onFinished(const QString& fileName, int error);
    void showDownloading(bool downloading);

    UpdateOffer m_offer;
    DownloadContext m_context;
    QPointer<DownloadManager> m_manager; ///< the download under way; deletes itself
    QString m_errorText;
    QString m_installerPath;
    QPushButton* m_download;
    QPushButton* m_page;
    QPushButton* m_later;
    QProgressBar* m_progress;
    NoteLabel* m_note;
};
