#pragma once

#include <QString>
#include <QWidget>

class NoteLabel;
class QLineEdit;
class QToolButton;

/// A folder: its path, a button that looks for it, and a note below when something is wrong.
class FolderEdit : public QWidget
{
    Q_OBJECT
public:
    /// What counts as a good path.
    enum class Rule
    {
        Optional, ///< empty, or a folder that exists
        Creatable ///< absolute, a folder that exists or can be made
    };

    /// `name` says what folder it is, for the browse window and for screen readers.
    FolderEdit(Rule rule, const QString& name, QWidget* parent = nullptr);

    /// Shows a stored path; it counts as not edited from now on.
    void setFolder(const QString& path);
    QString folder() const;
    /// Why the path can't be taken; empty for a good one. A stored path that has gone is shown as a
    /// warning and is no fault as long as it isn't edited: a drive may just not be there. The part
    /// "{FS}" stands for the simulator's folder, so a path with it isn't looked for.
    QString fault() const;
    QLineEdit* lineEdit() const { return m_edit; }

Q_SIGNALS:
    void folderChanged(QString path);

private:
    QString problem() const;
    void browse();
    void onTextChanged();

    Rule m_rule;
    QString m_stored;
    QLineEdit* m_edit;
    QToolButton* m_browse;
    NoteLabel* m_note;
};
