#include "app/gui/NoticeBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

NoticeBar::NoticeBar(QWidget* parent) : QToolBar(parent)
{
    setObjectName(QStringLiteral("noticeBar"));
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    toggleViewAction()->setVisible(false); // it shows itself
    auto* lines = new QWidget(this);
    m_lines = new QVBoxLayout(lines);
    m_lines->setContentsMargins(0, 0, 0, 0);
    lines->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(lines);
    retranslateUi();
    hide();
}

void NoticeBar::showNotice(Notice about, const QString& text)
{
    Row& row = rowOf(about);
    row.label->setText(text);
    row.line->show();
    showIfNeeded();
}

void NoticeBar::clearNotice(Notice about)
{
    const auto found = m_rows.find(about);
    if (found != m_rows.end()) {
        found->second.line->hide();
        showIfNeeded();
    }
}

NoticeBar::Row& NoticeBar::rowOf(Notice about)
{
    Row& row = m_rows[about];
    if (row.line != nullptr) {
        return row;
    }
    row.line = new QWidget(this);
    row.label = new QLabel(row.line);
    row.label->setTextFormat(Qt::PlainText); // it may quote a server
    row.label->setWordWrap(true);
    auto* icon = new QLabel(row.line);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size));
    row.close = new QToolButton(row.line);
    row.close->setAutoRaise(true);
    row.close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    connect(row.close, &QToolButton::clicked, this, [this, about] { clearNotice(about); });
    auto* layout = new QHBoxLayout(row.line);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(icon);
    layout->addWidget(row.label, 1);
    if (about == Notice::Download) {
        row.again = new QToolButton(row.line);
        connect(row.again, &QToolButton::clicked, this, [this, about] {
            clearNotice(about);
            Q_EMIT sigDownloadAgain();
        });
        layout->addWidget(row.again);
    }
    layout->addWidget(row.close);
    m_lines->addWidget(row.line);
    retranslateUi();
    return row;
}

void NoticeBar::retranslateUi()
{
    setWindowTitle(tr("Notices"));
    if (auto* more = findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"))) {
        more->setAccessibleName(tr("More"));
    }
    for (auto& [about, row] : m_rows) {
        row.close->setToolTip(tr("Close"));
        row.close->setAccessibleName(tr("Close"));
        if (row.again != nullptr) {
            row.again->setText(tr("Try again"));
        }
    }
}

void NoticeBar::showIfNeeded()
{
    setVisible(std::any_of(m_rows.begin(), m_rows.end(),
                           [](const auto& entry) { return !entry.second.line->isHidden(); }));
}
