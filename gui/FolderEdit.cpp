#include "gui/FolderEdit.h"

#include "gui/Icons.h"
#include "gui/NoteLabel.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

bool isTemplate(const QString& path)
{
    return path.contains(QLatin1Char('{'));
}

/// The nearest part of the path that exists.
QFileInfo existingPart(const QString& path)
{
    QFileInfo part(QDir::cleanPath(path));
    while (!part.exists() && part.absolutePath() != part.absoluteFilePath()) {
        part = QFileInfo(part.absolutePath());
    }
    return part;
}

} // namespace

FolderEdit::FolderEdit(Rule rule, const QString& name, QWidget* parent)
    : QWidget(parent)
    , m_rule(rule)
    , m_edit(new QLineEdit(this))
    , m_browse(new QToolButton(this))
    , m_note(new NoteLabel(this))
{
    setFocusProxy(m_edit);
    setAccessibleName(name);
    m_edit->setAccessibleName(name);
    m_browse->setIcon(Icons::appIcon(Icons::Name::OpenFolder));
    m_browse->setToolTip(tr("Choose a folder"));
    m_browse->setAccessibleName(tr("Choose a folder: %1").arg(name));
    m_browse->setFocusPolicy(Qt::StrongFocus);
    auto* row = new QHBoxLayout;
    row->addWidget(m_edit, 1);
    row->addWidget(m_browse);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(row);
    column->addWidget(m_note);
    connect(m_edit, &QLineEdit::textChanged, this, &FolderEdit::onTextChanged);
    connect(m_browse, &QToolButton::clicked, this, &FolderEdit::browse);
}

void FolderEdit::setFolder(const QString& path)
{
    m_stored = path;
    m_edit->setText(path);
    m_edit->setCursorPosition(0);
    onTextChanged();
}

QString FolderEdit::folder() const
{
    return m_edit->text().trimmed();
}

QString FolderEdit::problem() const
{
    const QString path = folder();
    if (path.isEmpty()) {
        return m_rule == Rule::Creatable ? tr("A folder is needed here.") : QString();
    }
    if (isTemplate(path)) {
        return QString();
    }
    const QFileInfo info(path);
    if (m_rule == Rule::Optional) {
        return info.isDir() ? QString() : tr("This folder does not exist.");
    }
    if (info.isRelative()) {
        return tr("Give the whole path of the folder.");
    }
    const QFileInfo part = existingPart(path);
    const bool usable = part.isDir() && part.isWritable();
    return usable ? QString() : tr("This folder can not be written to.");
}

QString FolderEdit::fault() const
{
    return folder() == m_stored.trimmed() && m_rule == Rule::Optional ? QString() : problem();
}

void FolderEdit::onTextChanged()
{
    m_note->setNote(NoteLabel::Kind::Warning, problem());
    Q_EMIT folderChanged(folder());
}

void FolderEdit::browse()
{
    const QString start = existingPart(folder()).absoluteFilePath();
    const QString chosen = QFileDialog::getExistingDirectory(this, accessibleName(), start);
    if (!chosen.isEmpty()) {
        m_edit->setText(chosen);
    }
}
