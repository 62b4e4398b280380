#include "app/gui/WindowDialogs.h"

#include "app/gui/dialogs/DlgUpdater.h"
#include "gui/PlainButtons.h"

#include <QAbstractButton>
#include <QThread>

#include <algorithm>
#include <utility>

namespace {

/// Further boxes are left out: their texts stand in the log as well.
constexpr std::size_t kMostBoxes = 8;

} // namespace

WindowDialogs::WindowDialogs(QWidget* parent, DownloadContext downloads)
    : m_parent(parent)
    , m_downloads(std::move(downloads))
{}

WindowDialogs::~WindowDialogs()
{
    for (const QPointer<QMessageBox>& box : m_boxes) {
        delete box.data();
    }
}

void WindowDialogs::warning(const QString& title, const QString& text)
{
    show(QMessageBox::Warning, title, text);
}

void WindowDialogs::critical(const QString& title, const QString& text)
{
    show(QMessageBox::Critical, title, text);
}

void WindowDialogs::show(QMessageBox::Icon icon, const QString& title, const QString& text)
{
    const auto call = [this, icon, title, text] {
        open(icon, title, text);
    };
    if (QThread::currentThread() == thread()) {
        call();
    } else {
        QMetaObject::invokeMethod(this, call, Qt::QueuedConnection);
    }
}

void WindowDialogs::open(QMessageBox::Icon icon, const QString& title, const QString& text)
{
    m_boxes.erase(std::remove(m_boxes.begin(), m_boxes.end(), nullptr), m_boxes.end());
    for (const QPointer<QMessageBox>& box : m_boxes) {
        if (box->text() == text && box->windowTitle() == title) {
            box->raise();
            return;
        }
    }
    if (m_boxes.size() >= kMostBoxes) {
        return;
    }
    auto* box = new QMessageBox(icon, title, text, QMessageBox::Ok, m_parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    usePlainButtons(*box);
    box->setWindowModality(Qt::NonModal);
    m_boxes.emplace_back(box);
    box->show();
}

void WindowDialogs::farewell(const QString& title, const QString& text)
{
    QMessageBox box(QMessageBox::Critical, title, text, QMessageBox::Ok, m_parent);
    box.setTextFormat(Qt::PlainText);
    usePlainButtons(box);
    box.exec();
}

bool WindowDialogs::question(const QString& title, const QString& text)
{
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No,
                    m_parent);
    box.setTextFormat(Qt::PlainText);
    usePlainButtons(box);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

QString WindowDialogs::offerUpdate(const UpdateOffer& offer)
{
    DlgUpdater dialog(offer, m_downloads, m_parent);
    return dialog.exec() == QDialog::Accepted ? dialog.installerPath() : QString();
}
