#include "app/gui/dialogs/DlgUpdater.h"

#include "app/download/ConnectionProbe.h"
#include "gui/DialogSize.h"
#include "gui/Icons.h"
#include "gui/NoteLabel.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr int kWidth = 560;
constexpr int kHeight = 420;
constexpr int kThousandths = 1000;
constexpr qint64 kLargestInstaller = 512LL * 1024 * 1024;
constexpr int kLongestInfo = 20000;
constexpr int kLongestVersion = 40;

} // namespace

DlgUpdater::DlgUpdater(const UpdateOffer& offer, DownloadContext context, QWidget* parent)
    : QDialog(parent)
    , m_offer(offer)
    , m_context(std::move(context))
    , m_download(new QPushButton(Icons::appIcon(Icons::Name::CheckVersion),
                                 tr("&Download and install"), this))
    , m_page(new QPushButton(tr("Open the download &page"), this))
    , m_later(new QPushButton(offer.mandatory ? tr("&Close") : tr("&Later"), this))
    , m_progress(new QProgressBar(this))
    , m_note(new NoteLabel(this))
{
    setWindowTitle(tr("New version of Cirrilon"));
    m_context.dialogs = nullptr;
    m_context.limits.replyBytes = kLargestInstaller;
    m_download->setEnabled(isWebAddress(QUrl(offer.automaticUrl)));
    m_page->setEnabled(isWebAddress(QUrl(offer.manualUrl)));
    buildLayout();
    connect(m_download, &QPushButton::clicked, this, &DlgUpdater::download);
    connect(m_page, &QPushButton::clicked, this, &DlgUpdater::openPage);
    connect(m_later, &QPushButton::clicked, this, &DlgUpdater::reject);
    resizeToScreen(*this, QSize(kWidth, kHeight));
}

DlgUpdater::~DlgUpdater()
{
    cancelDownload();
}

QString DlgUpdater::headline() const
{
    const QString kind = m_offer.beta ? tr("The beta version %1 of Cirrilon is available.")
                                      : tr("Version %1 of Cirrilon is available.");
    QString text =
        kind.arg(m_offer.newVersion.left(kLongestVersion)) + QLatin1Char('\n')
        + tr("You are using version %1.").arg(m_offer.currentVersion.left(kLongestVersion));
    if (m_offer.mandatory) {
        text += QLatin1Char('\n') + tr("This version is no longer supported.");
    }
    return text;
}

/// The info server writes line ends as "<br>" too; everything else of it is shown as it is.
QString DlgUpdater::infoText() const
{
    QString text = m_offer.info.left(kLongestInfo);
    text.replace(QLatin1String("<br>"), QLatin1String("\n"), Qt::CaseInsensitive);
    return text.replace(QLatin1String("\\n"), QLatin1String("\n"));
}

void DlgUpdater::buildLayout()
{
    auto* head = new QLabel(headline(), this);
    head->setTextFormat(Qt::PlainText);
    head->setWordWrap(true);
    auto* info = new QPlainTextEdit(infoText(), this);
    info->setReadOnly(true);
    info->setTabChangesFocus(true);
    info->setAccessibleName(tr("What is new"));
    info->setPlaceholderText(tr("There is no description."));
    m_progress->setAccessibleName(tr("Download"));
    m_progress->setRange(0, kThousandths);
    m_progress->hide();
    m_download->setDefault(m_download->isEnabled());
    auto* row = new QHBoxLayout;
    row->addWidget(m_download);
    row->addWidget(m_page);
    row->addStretch(1);
    row->addWidget(m_later);
    auto* column = new QVBoxLayout(this);
    column->addWidget(head);
    column->addWidget(info, 1);
    column->addWidget(m_progress);
    column->addWidget(m_note);
    column->addLayout(row);
}

void DlgUpdater::showDownloading(bool downloading)
{
    m_progress->setVisible(downloading);
    m_progress->setRange(0, 0); // busy until the size is known
    m_download->setEnabled(!downloading);
    m_page->setEnabled(!downloading && isWebAddress(QUrl(m_offer.manualUrl)));
    m_later->setText(downloading ? tr("&Cancel") : m_offer.mandatory ? tr("&Close") : tr("&Later"));
}

void DlgUpdater::download()
{
    const QUrl url(m_offer.automaticUrl);
    if (!isWebAddress(url) || m_manager != nullptr) {
        return;
    }
    m_note->clear();
    m_errorText.clear();
    m_manager = new DownloadManager(m_context);
    connect(m_manager, &DownloadManager::sigDownloadProgress, this, &DlgUpdater::onProgress);
    connect(m_manager, &DownloadManager::sigDownloadError, this, &DlgUpdater::onError);
    connect(m_manager, &DownloadManager::finished, this, &DlgUpdater::onFinished);
    showDownloading(true);
    m_manager->append(url, QStringLiteral("Cirrilon - Downloading update"));
}

void DlgUpdater::cancelDownload()
{
    if (m_manager != nullptr) {
        m_manager->disconnect(this);
        delete m_manager.data();
    }
}

void DlgUpdater::reject()
{
    if (m_manager == nullptr) {
        QDialog::reject();
        return;
    }
    cancelDownload();
    showDownloading(false);
    m_note->setNote(NoteLabel::Kind::Info, tr("The download was cancelled."));
}

void DlgUpdater::openPage()
{
    const QUrl url(m_offer.manualUrl);
    if (!isWebAddress(url)) {
        return;
    }
    if (QDesktopServices::openUrl(url)) {
        QDialog::reject();
    } else {
        m_note->setNote(NoteLabel::Kind::Bad,
                        tr("The browser can't be opened. The address is %1").arg(url.toString()));
    }
}

void DlgUpdater::onProgress(qlonglong value, qlonglong total)
{
    if (total > 0) {
        m_progress->setRange(0, kThousandths);
        m_progress->setValue(static_cast<int>(value * kThousandths / total));
    }
}

void DlgUpdater::onError(int /*code*/, const QString& text)
{
    m_errorText = text;
}

void DlgUpdater::onFinished(const QString& fileName, int error)
{
    m_manager->disconnect(this);
    m_manager.clear(); // it deletes itself
    showDownloading(false);
    if (error == 0) {
        m_installerPath = fileName;
        accept();
        return;
    }
    const QString reason = m_errorText.isEmpty() ? QString::number(error) : m_errorText;
    m_note->setNote(NoteLabel::Kind::Bad, tr("The download failed: %1").arg(reason));
}
