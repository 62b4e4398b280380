#include "app/gui/WindowDialogs.h"

#include "app/gui/dialogs/DlgUpdater.h"
#include "gui/PlainButtons.h"

#include <QAbstractButton>
#include <QThread>

#include <algorithm>
#include <utility>

WindowDialogs::WindowDialogs(QWidget* parent, DownloadContext downloads)
    : m_parent(parent)
    , m_downloads(std::move(downloads))
{}

WindowDialogs::~WindowDialogs()
{
    m_waiting.clear();
    delete m_box.data();
}

void WindowDialogs::warning(const QString& title, const QString& text)
{
    show({QMessageBox::Warning, title, text});
}

void WindowDialogs::critical(const QString& title, const QString& text)
{
    show({QMessageBox::Critical, title, text});
}

void WindowDialogs::show(const Message& message)
{
    if (QThread::currentThread() == thread()) {
        take(message);
    } else {
        QMetaObject::invokeMethod(
            this, [this, message] { take(message); }, Qt::QueuedConnection);
    }
}

void WindowDialogs::take(const Message& message)
{
    if (m_box == nullptr) {
        open(message);
        return;
    }
    if (m_box->windowTitle() == message.title) {
        m_box->setText(message.text);
        m_box->raise();
        return;
    }
    const auto same =
        std::find_if(m_waiting.begin(), m_waiting.end(),
                     [&message](const Message& other) { return other.title == message.title; });
    if (same != m_waiting.end()) {
        same->text = message.text;
    } else {
        m_waiting.push_back(message);
    }
}

void WindowDialogs::open(const Message& message)
{
    m_box = new QMessageBox(message.icon, message.title, message.text, QMessageBox::Ok, m_parent);
    m_box->setAttribute(Qt::WA_DeleteOnClose);
    m_box->setTextFormat(Qt::PlainText);
    m_box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    usePlainButtons(*m_box);
    m_box->setWindowModality(Qt::NonModal);
    connect(m_box.data(), &QMessageBox::finished, this, &WindowDialogs::openNext);
    m_box->show();
}

/// The closed box is deleted by the event loop, so it is let go here.
void WindowDialogs::openNext()
{
    m_box.clear();
    if (!m_waiting.empty()) {
        const Message next = m_waiting.front();
        m_waiting.erase(m_waiting.begin());
        open(next);
    }
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
