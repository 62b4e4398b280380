#include "app/gui/DockWidgetDebug.h"

#include "app/base/LogLevel.h"
#include "gui/Icons.h"

#include <QAction>
#include <QDir>
#include <QEvent>
#include <QMenu>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>

#include <algorithm>
#include <memory>

namespace {

constexpr int kMostLines = 1000;
/// The view has more lines than the list, but not without end. They go many at once, since the view
/// walks through all the others whenever its beginning changes.
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
    , m_view(new QTextBrowser(this))
{
    setObjectName(QStringLiteral("DockDebug"));
    setAllowedAreas(Qt::AllDockWidgetAreas);
    m_view->setObjectName(QStringLiteral("textEdit_debug"));
    m_view->setUndoRedoEnabled(false);
    m_view->setOpenLinks(false);
    m_view->setTabChangesFocus(true);
    m_view->setContextMenuPolicy(Qt::CustomContextMenu);
    setWidget(m_view);
    m_timer.setInterval(kPauseMs);
    connect(&m_timer, &QTimer::timeout, this, &DockWidgetDebug::showSome);
    connect(m_view, &QWidget::customContextMenuRequested, this, &DockWidgetDebug::showContextMenu);
    connect(m_view, &QTextBrowser::anchorClicked, this, &DockWidgetDebug::openLink);
    retranslateUi();
}

void DockWidgetDebug::append(const QString& item, int level)
{
    m_lines.append(coloured(item, level));
    m_waiting = std::min(m_waiting + 1, kMostBlocks); // the view would drop more than that again
    while (m_lines.size() > std::max(kMostLines, m_waiting)) {
        m_lines.removeFirst();
    }
    if (!m_timer.isActive()) {
        m_timer.start();
    }
}

void DockWidgetDebug::showSome()
{
    int count = 0;
    for (int cost = 0; count < m_waiting && cost < kCharactersAtOnce; ++count) {
        cost += kCharactersOfALine + m_lines.at(m_lines.size() - m_waiting + count).size();
    }
    showLines(count);
}

void DockWidgetDebug::flush()
{
    showLines(m_waiting);
}

void DockWidgetDebug::showLines(int count)
{
    QTextCursor together(m_view->document()); // laid out once for all of them
    together.beginEditBlock();
    for (; count > 0; --count, --m_waiting) {
        // The element around it saves runs of blanks, and has every line read as rich text.
        m_view->append(QStringLiteral("<span style=\"white-space:pre-wrap\">")
                       + m_lines.at(m_lines.size() - m_waiting) + QStringLiteral("</span>"));
    }
    together.endEditBlock();
    dropOldBlocks();
    m_view->verticalScrollBar()->setValue(m_view->verticalScrollBar()->maximum());
    if (m_waiting == 0) {
        m_timer.stop();
    }
}

void DockWidgetDebug::dropOldBlocks()
{
    const QTextDocument& document = *m_view->document();
    const int tooMany = document.blockCount() - kMostBlocks;
    if (tooMany <= 0) {
        return;
    }
    QTextCursor oldest(m_view->document());
    // By position: moved block by block the cursor would ask for the place of each.
    oldest.setPosition(document.findBlockByNumber(std::max(tooMany, kDroppedBlocks)).position(),
                       QTextCursor::KeepAnchor);
    oldest.removeSelectedText();
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
    m_view->setAccessibleName(tr("Log"));
    m_view->setToolTip(tr("What the program does. Links open folders."));
}
