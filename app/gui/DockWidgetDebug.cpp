#include "app/gui/DockWidgetDebug.h"

#include "app/base/LogLevel.h"
#include "gui/Icons.h"

#include <QAction>
#include <QDir>
#include <QEvent>
#include <QMenu>
#include <QScrollBar>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>

#include <memory>

namespace {

constexpr int kMostLines = 1000;
/// The view keeps more than the list, but not without end. Lines go in bulk, since the view lays
/// everything out anew whenever its beginning changes.
constexpr int kMostBlocks = 6000;
constexpr int kDroppedBlocks = 2000;

QString Coloured(const QString& item, int level)
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
    connect(m_view, &QWidget::customContextMenuRequested, this, &DockWidgetDebug::showContextMenu);
    connect(m_view, &QTextBrowser::anchorClicked, this, &DockWidgetDebug::openLink);
    retranslateUi();
}

void DockWidgetDebug::append(const QString& item, int level)
{
    const QString line = Coloured(item, level);
    m_lines.append(line);
    if (m_lines.size() > kMostLines) {
        m_lines.removeFirst();
    }
    // The element around it keeps runs of blanks, and has every line read as rich text.
    m_view->append(QStringLiteral("<span style=\"white-space:pre-wrap\">") + line
                   + QStringLiteral("</span>"));
    dropOldBlocks();
    m_view->verticalScrollBar()->setValue(m_view->verticalScrollBar()->maximum());
}

void DockWidgetDebug::dropOldBlocks()
{
    if (m_view->document()->blockCount() <= kMostBlocks) {
        return;
    }
    QTextCursor oldest(m_view->document());
    oldest.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor, kDroppedBlocks);
    oldest.removeSelectedText();
}

void DockWidgetDebug::clear()
{
    m_lines.clear();
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
