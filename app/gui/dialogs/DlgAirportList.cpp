#include "app/gui/dialogs/DlgAirportList.h"

#include "app/gui/dialogs/AirportListModel.h"
#include "gui/DialogSize.h"
#include "gui/Icons.h"
#include "gui/NoteLabel.h"
#include "gui/PlainButtons.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>
#include <vector>

namespace {

constexpr int kWidth = 820;
constexpr int kHeight = 560;

QPushButton* rowButton(QWidget* parent, Icons::Name icon, const QString& text)
{
    auto* button = new QPushButton(Icons::appIcon(icon), text, parent);
    button->setAutoDefault(false);
    return button;
}

bool askDiscard(DlgAirportList& dialog)
{
    QMessageBox box(QMessageBox::Question, dialog.windowTitle(),
                    DlgAirportList::tr("Close without saving the changes?"),
                    QMessageBox::Yes | QMessageBox::No, &dialog);
    box.setDefaultButton(QMessageBox::No);
    usePlainButtons(box);
    return box.exec() == QMessageBox::Yes;
}

/// The rows of the selected cells, last first.
std::vector<int> selectedRows(const QTableView& table)
{
    std::vector<int> rows;
    for (const QModelIndex& index : table.selectionModel()->selectedIndexes()) {
        rows.push_back(index.row());
    }
    std::sort(rows.rbegin(), rows.rend());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

} // namespace

DlgAirportList::DlgAirportList(const QString& workFolder, QWidget* parent)
    : QDialog(parent)
    , m_workFolder(workFolder)
    , m_tabs(new QTabWidget(this))
    , m_note(new NoteLabel(this))
{
    setWindowTitle(tr("Airport list"));
    m_tabs->addTab(buildPage(m_airports, tr("Additional airports"),
                             tr("Airports that the program doesn't know, in decimal degrees.")),
                   tr("&Additional airports"));
    m_tabs->addTab(
        buildPage(m_icaos, tr("Renamed ICAO codes"), tr("Airports whose ICAO code has changed.")),
        tr("Re&named ICAO codes"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &DlgAirportList::save);
    connect(buttons, &QDialogButtonBox::rejected, this, &DlgAirportList::reject);
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_tabs, 1);
    column->addWidget(m_note);
    column->addWidget(buttons);
    usePlainButtons(*this);
    resizeToScreen(*this, QSize(kWidth, kHeight));
    OnReadOldIcaos();
    onReadAirports();
}

QWidget* DlgAirportList::buildPage(Page& page, const QString& name, const QString& hint)
{
    auto* box = new QWidget(m_tabs);
    page.model = new AirportListModel(page.kind, this);
    page.table = new QTableView(box);
    page.table->setModel(page.model);
    page.table->setAccessibleName(name);
    page.table->setTabKeyNavigation(false);
    page.table->horizontalHeader()->setSectionResizeMode(airportlist::kName, QHeaderView::Stretch);
    page.table->horizontalHeader()->setHighlightSections(false);
    auto* label = new QLabel(hint, box);
    label->setWordWrap(true);
    label->setBuddy(page.table);
    auto* add = rowButton(box, Icons::Name::Add, tr("A&dd"));
    auto* edit = rowButton(box, Icons::Name::Edit, tr("&Edit"));
    auto* remove = rowButton(box, Icons::Name::Remove, tr("&Remove"));
    connect(add, &QPushButton::clicked, this, [this, &page] { addRow(page); });
    connect(edit, &QPushButton::clicked, this, [this, &page] { editRow(page); });
    connect(remove, &QPushButton::clicked, this, [this, &page] { removeRows(page); });
    auto* shortcut = new QShortcut(QKeySequence::Delete, page.table);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, &page] { removeRows(page); });
    connect(page.model, &QAbstractItemModel::dataChanged, m_note, &NoteLabel::clear);
    auto* row = new QHBoxLayout;
    for (QPushButton* button : {add, edit, remove}) {
        row->addWidget(button);
    }
    row->addStretch(1);
    auto* column = new QVBoxLayout(box);
    column->addWidget(label);
    column->addWidget(page.table, 1);
    column->addLayout(row);
    return box;
}

QString DlgAirportList::pathOf(const Page& page) const
{
    return QDir(m_workFolder).filePath(airportlist::fileName(page.kind));
}

void DlgAirportList::read(Page& page)
{
    QString error;
    page.model->setList(airportlist::read(page.kind, pathOf(page), error));
    page.readable = error.isEmpty();
    page.table->resizeColumnsToContents();
    const int unreadable = page.model->list().unreadable;
    if (!page.readable) {
        m_note->setNote(NoteLabel::Kind::Bad, tr("Can not read %1: %2").arg(pathOf(page), error));
    } else if (unreadable > 0) {
        m_note->setNote(NoteLabel::Kind::Warning,
                        tr("%1: lines that can not be read and are kept as they are: %2")
                            .arg(airportlist::fileName(page.kind))
                            .arg(unreadable));
    }
}

bool DlgAirportList::writeFile(Page& page)
{
    if (!page.readable) {
        m_note->setNote(NoteLabel::Kind::Bad,
                        tr("%1 could not be read, so it is not overwritten.").arg(pathOf(page)));
        return false;
    }
    const QString error = airportlist::write(page.kind, pathOf(page), page.model->list());
    if (!error.isEmpty()) {
        m_note->setNote(NoteLabel::Kind::Bad, tr("Can not write %1: %2").arg(pathOf(page), error));
        return false;
    }
    page.model->setUnchanged();
    Q_EMIT sigAirportsChanged();
    return true;
}

bool DlgAirportList::write(Page& page)
{
    QString reason;
    const QModelIndex fault = page.model->firstFault(reason);
    if (!fault.isValid()) {
        return writeFile(page);
    }
    m_tabs->setCurrentWidget(page.table->parentWidget());
    page.table->setCurrentIndex(fault);
    page.table->setFocus();
    m_note->setNote(NoteLabel::Kind::Bad, tr("Row %1: %2").arg(fault.row() + 1).arg(reason));
    return false;
}

void DlgAirportList::onReadAirports()
{
    read(m_airports);
}

void DlgAirportList::onWriteAirports()
{
    write(m_airports);
}

void DlgAirportList::OnReadOldIcaos()
{
    read(m_icaos);
}

void DlgAirportList::OnWriteOldIcaos()
{
    write(m_icaos);
}

bool DlgAirportList::save()
{
    for (Page* page : {&m_airports, &m_icaos}) {
        if (page->model->isChanged() && !write(*page)) {
            return false;
        }
    }
    m_note->setNote(NoteLabel::Kind::Good, tr("Saved."));
    return true;
}

void DlgAirportList::reject()
{
    const bool changed = m_airports.model->isChanged() || m_icaos.model->isChanged();
    if (!changed || askDiscard(*this)) {
        QDialog::reject();
    }
}

/// Return belongs to the table; it doesn't save.
void DlgAirportList::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QDialog::keyPressEvent(event);
    }
}

void DlgAirportList::addRow(const Page& page)
{
    const int row = page.model->addRow();
    page.table->setCurrentIndex(page.model->index(row, 0));
    page.table->scrollToBottom();
    page.table->edit(page.model->index(row, 0));
}

void DlgAirportList::editRow(const Page& page)
{
    if (page.table->currentIndex().isValid()) {
        page.table->setFocus();
        page.table->edit(page.table->currentIndex());
    }
}

void DlgAirportList::removeRows(const Page& page)
{
    for (const int row : selectedRows(*page.table)) {
        page.model->removeRow(row);
    }
}
