#include "app/gui/DebugBar.h"

#include "app/base/LogLevel.h"
#include "gui/Icons.h"

#include <QAction>
#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

namespace {

void describe(QToolButton& button, const QString& tip)
{
    button.setToolTip(tip);
    button.setAccessibleName(tip);
}

} // namespace

DebugBar::DebugBar(QWidget* parent)
    : QWidget(parent)
    , m_level(new QComboBox(this))
    , m_find(new QLineEdit(this))
    , m_result(new QLabel(this))
{
    build();
    retranslateUi();
    connect(m_level, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this] { Q_EMIT sigLevel(m_level->currentData().toInt()); });
    connect(m_find, &QLineEdit::textChanged, m_result, &QLabel::clear);
    connect(m_next, &QToolButton::clicked, this, [this] { find(false); });
    connect(m_previous, &QToolButton::clicked, this, [this] { find(true); });
    connect(m_copy, &QToolButton::clicked, this, &DebugBar::sigCopy);
    connect(m_report, &QToolButton::clicked, this, &DebugBar::sigReport);
}

void DebugBar::build()
{
    using Icons::Name;
    m_level->setObjectName(QStringLiteral("comboBox_level"));
    for (const int level :
         {loglevel::kDebug, loglevel::kNotification, loglevel::kWarning, loglevel::kError})
    {
        m_level->addItem(QString(), level);
    }
    m_find->setObjectName(QStringLiteral("lineEdit_find"));
    m_find->installEventFilter(this);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_level);
    row->addWidget(m_find, 1);
    row->addWidget(m_result);
    m_previous = addButton(static_cast<int>(Name::Previous), "toolButton_findPrevious");
    m_next = addButton(static_cast<int>(Name::Next), "toolButton_findNext");
    m_copy = addButton(static_cast<int>(Name::Copy), "toolButton_copyLog");
    m_report = addButton(static_cast<int>(Name::Save), "toolButton_report");
    m_next->setShortcut(QKeySequence(QKeySequence::FindNext));
    m_previous->setShortcut(QKeySequence(QKeySequence::FindPrevious));
}

QToolButton* DebugBar::addButton(int icon, const char* name)
{
    auto* button = new QToolButton(this);
    button->setObjectName(QString::fromLatin1(name));
    button->setIcon(Icons::appIcon(static_cast<Icons::Name>(icon)));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    layout()->addWidget(button);
    return button;
}

void DebugBar::find(bool backwards)
{
    if (m_find->text().isEmpty()) {
        focusFind();
    } else {
        Q_EMIT sigFind(m_find->text(), backwards);
    }
}

void DebugBar::showFound(bool found)
{
    m_result->setText(found ? QString() : tr("Not found"));
}

void DebugBar::focusFind()
{
    m_find->setFocus(Qt::ShortcutFocusReason);
    m_find->selectAll();
}

bool DebugBar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_find && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            find(key->modifiers().testFlag(Qt::ShiftModifier));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void DebugBar::retranslateUi()
{
    const QStringList levels{tr("All lines"), tr("Notifications"), tr("Warnings"), tr("Errors")};
    for (int row = 0; row < levels.size(); ++row) {
        m_level->setItemText(row, levels.at(row));
    }
    m_level->setToolTip(tr("Shows lines of this level and above"));
    m_level->setAccessibleName(tr("Level"));
    m_find->setPlaceholderText(tr("Find"));
    m_find->setAccessibleName(tr("Find"));
    m_find->setToolTip(tr("Looks for a text in the log (Ctrl+F)"));
    describe(*m_previous, tr("Find previous"));
    describe(*m_next, tr("Find next"));
    describe(*m_copy, tr("Copy the selected lines, or all"));
    describe(*m_report, tr("Save report for support"));
}
