#include "app/gui/SubWindows.h"

#include <QAction>
#include <QDialog>

SubWindows::~SubWindows()
{
    for (const auto& entry : m_rows) {
        delete entry.second.window.data();
    }
}

void SubWindows::add(MainActions::Id id, QAction& action, Kind kind, const Make& make)
{
    m_rows.insert_or_assign(id, Row{kind, make, {}});
    connect(&action, &QAction::triggered, this, [this, id] { open(id); });
}

/// The window, null if there is none. One that was closed is deleted only when the event loop comes
/// to it.
QWidget* SubWindows::shown(const Row& row)
{
    return row.window.isNull() || row.window->isHidden() ? nullptr : row.window.data();
}

void SubWindows::open(MainActions::Id id)
{
    Row& row = m_rows.at(id);
    if (shown(row) == nullptr) {
        row.window = row.make();
        row.window->setAttribute(Qt::WA_DeleteOnClose);
        if (row.kind == Kind::Dialog) {
            row.window->setWindowModality(Qt::WindowModal);
        }
    }
    row.window->show();
    row.window->raise();
    row.window->activateWindow();
}

void SubWindows::closeBeside()
{
    for (const auto& entry : m_rows) {
        QWidget* window = shown(entry.second);
        if (entry.second.kind == Kind::Beside && window != nullptr) {
            window->close();
        }
    }
}
