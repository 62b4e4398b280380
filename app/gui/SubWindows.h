#pragma once

#include "app/gui/MainActions.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <map>

class QAction;

/// The windows and dialogs that open from the menus. Each is made when its action asks for it,
/// brought to the front when it is open already, and dropped when it closes. Those that are open
/// are deleted with this object, so what they refer to outlives it. Main thread.
class SubWindows : public QObject
{
    Q_OBJECT
public:
    enum class Kind
    {
        Beside, ///< the main window goes on
        Dialog  ///< a QDialog; the main window waits for its end, the program doesn't
    };
    /// The new window's parent is the main window.
    using Make = std::function<QWidget*()>;

    SubWindows() = default;
    ~SubWindows() override;

    /// Adds a window and opens it by the action from now on.
    void add(MainActions::Id id, QAction& action, Kind kind, const Make& make);
    void open(MainActions::Id id);
    /// Closes the windows beside the main one.
    void closeBeside();

private:
    struct Row
    {
        Kind kind;
        Make make;
        QPointer<QWidget> window; ///< null while there is none
    };

    static QWidget* shown(const Row& row);

    std::map<MainActions::Id, Row> m_rows;
};
