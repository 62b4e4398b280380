#include "app/gui/DockWidgetDebug.h"

#include "app/base/LogLevel.h"
#include "app/gui/DebugBar.h"
#include "gui/Icons.h"

#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QEvent>
#include <QGuiApplication>
#include <QKeySequence>
#include <QMenu>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>
#include <memory>

namespace {

/// Not without end. They go many at once, since the view walks through all the others whenever its
/// beginning changes.
constexpr int kMostBlocks = 6000;
constexpr int kDroppedBlocks = 2000;
/// How much comes into the view at a time, and how often: some three long lines or fifty short
/// ones, less than 10 ms of work, and the rest of the time for everything else.
constexpr int kCharactersAtOnce = 12000;
constexpr int kCharactersOfALine = 200; ///< what a line costs beside its own
constexpr int kPauseMs = 20;

QString coloured(const QString& item, int level)
{
    switch (level) {
    case loglevel::kWarning:
        return QStringLiteral("<b style=\"color:orange\"> ") + item + QStringLiteral(" </b> ");
    case loglevel::kError:
        return QStringLiteral("<b style=\"color:red\"> ") + item + QStringLiteral(" </b> ");
    default:
        return item;
    }
}

} // namespace

DockWidgetDebug::DockWidgetDebug(QWidget* parent)
    : QDockWidget(parent)
    , m_bar(new DebugBar(this))
    , m_view(new QTextBrowser(this))
{
    setObjectName(QStringLiteral("DockDebug"));
    setAllowedAreas(Qt::AllDockWidgetAreas);
    m_view->setObjectName(QStringLiteral("textEdit_debug"));
    m_view->setUndoRedoEnabled(false);
    m_view->setOpenLinks(false);
    m_view->setTabChangesFocus(true);
    m_view->setContextMenuPolicy(Qt::CustomContextMenu);
    auto* both = new QWidget(this);
    auto* column = new QVBoxLayout(both);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_bar);
    column->addWidget(m_view, 1);
    setWidget(both);
    m_timer.setInterval(kPauseMs);
    connect(&m_timer, &QTimer::timeout, this, &DockWidgetDebug::showSome);
    connect(m_view, &QWidget::customContextMenuRequested, this, &DockWidgetDebug::showContextMenu);
    connect(m_view, &QTextBrowser::anchorClicked, this, &DockWidgetDebug::openLink);
    // The range also changes when the dock does; then the view would lose its end unnoticed.
    QScrollBar* const scroll = m_view->verticalScrollBar();
    connect(scroll, &QScrollBar::valueChanged, this,
            [this, scroll](int value) { m_follows = value >= scroll->maximum(); });
    connect(scroll, &QScrollBar::rangeChanged, this, [this, scroll](int, int maximum) {
        if (m_follows) {
            scroll->setValue(maximum);
        }
    });
    buildBar();
    retranslateUi();
}

void DockWidgetDebug::buildBar()
{
    connect(m_bar, &DebugBar::sigLevel, this, &DockWidgetDebug::setLevel);
    connect(m_bar, &DebugBar::sigFind, this, &DockWidgetDebug::find);
    connect(m_bar, &DebugBar::sigCopy, this, &DockWidgetDebug::copy);
    connect(m_bar, &DebugBar::sigReport, this, &DockWidgetDebug::sigReport);
    auto* findAction = new QAction(this);
    findAction->setShortcut(QKeySequence(QKeySequence::Find));
    findAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(findAction, &QAction::triggered, m_bar, &DebugBar::focusFind);
    addAction(findAction);
}

void DockWidgetDebug::append(const QString& item, int level)
{
    m_lines.push_back({coloured(item, level), level});
    if (m_lines.size() > std::size_t{kMostBlocks}) {
        m_lines.pop_front();
    }
    m_waiting = std::min(m_waiting + 1, m_lines.size());
    if (!m_timer.isActive()) {
        m_timer.start();
    }
}

void DockWidgetDebug::setLevel(int level)
{
    m_level = level;
    m_view->clear();
    m_waiting = m_lines.size();
    m_timer.start();
}

void DockWidgetDebug::showSome()
{
    showAtOnce(kCharactersAtOnce);
}

void DockWidgetDebug::flush()
{
    showAtOnce(std::numeric_limits<int>::max());
}

void DockWidgetDebug::showAtOnce(int mostCost)
{
    QTextCursor together(m_view->document()); // laid out once for all of them
    together.beginEditBlock();
    for (int cost = 0; m_waiting > 0 && cost < mostCost; --m_waiting) {
        const Line& line = nextWaiting();
        if (line.level >= m_level) {
            showLine(line);
            cost += kCharactersOfALine + line.text.size();
        }
    }
    together.endEditBlock();
    dropOldBlocks();
    if (m_follows) {
        m_view->verticalScrollBar()->setValue(m_view->verticalScrollBar()->maximum());
    }
    if (m_waiting == 0) {
        m_timer.stop();
    }
}

/// The element around it saves runs of blanks, and has every line read as rich text.
void DockWidgetDebug::showLine(const Line& line)
{
    m_view->append(QStringLiteral("<span style=\"white-space:pre-wrap\">") + line.text
                   + QStringLiteral("</span>"));
}

void DockWidgetDebug::dropOldBlocks()
{
    const QTextDocument& document = *m_view->document();
    const int tooMany = document.blockCount() - kMostBlocks;
    if (tooMany <= 0) {
        return;
    }
    // What the pilot reads stays at its place.
    const QTextCursor read = m_view->cursorForPosition(QPoint(0, 0));
    const int before = m_view->cursorRect(read).top();
    const bool follows = m_follows;
    QTextCursor oldest(m_view->document());
    // By position: moved block by block the cursor would ask for the place of each.
    oldest.setPosition(document.findBlockByNumber(std::max(tooMany, kDroppedBlocks)).position(),
                       QTextCursor::KeepAnchor);
    oldest.removeSelectedText();
    if (!follows) {
        QScrollBar& scroll = *m_view->verticalScrollBar();
        scroll.setValue(scroll.value() + m_view->cursorRect(read).top() - before);
    }
}

void DockWidgetDebug::find(const QString& text, bool backwards)
{
    const QTextDocument::FindFlags flags =
        backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    bool found = m_view->find(text, flags);
    if (!found) { // from the other end on
        const QTextCursor before = m_view->textCursor();
        m_view->moveCursor(backwards ? QTextCursor::End : QTextCursor::Start);
        found = m_view->find(text, flags);
        if (!found) {
            m_view->setTextCursor(before);
        }
    }
    m_bar->showFound(found);
}

void DockWidgetDebug::copy()
{
    if (m_view->textCursor().hasSelection()) {
        m_view->copy();
    } else {
        QGuiApplication::clipboard()->setText(m_view->toPlainText());
    }
}

void DockWidgetDebug::clear()
{
    m_lines.clear();
    m_waiting = 0;
    m_timer.stop();
    m_view->clear();
}

void DockWidgetDebug::showContextMenu(const QPoint& position)
{
    const std::unique_ptr<QMenu> menu(m_view->createStandardContextMenu(position));
    menu->addSeparator();
    QAction* clearAction = menu->addAction(Icons::appIcon(Icons::Name::Clear), tr("Clear"));
    connect(clearAction, &QAction::triggered, this, &DockWidgetDebug::clear);
    menu->exec(m_view->viewport()->mapToGlobal(position));
}

void DockWidgetDebug::openLink(const QUrl& link)
{
    // A drive letter reads as a scheme of one character.
    const bool local = link.isLocalFile() || link.scheme().size() <= 1;
    const QString path = link.isLocalFile() ? link.toLocalFile() : link.toString();
    const bool onNetwork = path.startsWith(QLatin1String("//"));
    if (local && !onNetwork && QDir::isAbsolutePath(path) && QDir(path).exists()) {
        Q_EMIT sigOpenFolder(path);
    }
}

void DockWidgetDebug::changeEvent(QEvent* event)
{
    QDockWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retranslateUi();
    }
}

void DockWidgetDebug::retranslateUi()
{
    setWindowTitle(tr("Debug"));
    m_bar->retranslateUi();
    m_view->setAccessibleName(tr("Log"));
    m_view->setToolTip(tr("What the program does. Links open folders."));
}
