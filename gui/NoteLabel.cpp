#include "gui/NoteLabel.h"

#include "gui/Icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

namespace {

Icons::Name signOf(NoteLabel::Kind kind)
{
    switch (kind) {
    case NoteLabel::Kind::Good:
        return Icons::Name::Ok;
    case NoteLabel::Kind::Warning:
        return Icons::Name::Warning;
    case NoteLabel::Kind::Bad:
        return Icons::Name::Error;
    case NoteLabel::Kind::Info:
        break;
    }
    return Icons::Name::Info;
}

} // namespace

NoteLabel::NoteLabel(QWidget* parent)
    : QWidget(parent)
    , m_sign(new QLabel(this))
    , m_text(new QLabel(this))
{
    m_text->setObjectName(QStringLiteral("label_note"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_sign, 0, Qt::AlignTop);
    row->addWidget(m_text, 1);
    hide();
}

void NoteLabel::setNote(Kind kind, const QString& text)
{
    m_text->setText(text);
    m_text->setAccessibleName(text);
    const int edge = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_sign->setPixmap(Icons::appPixmap(signOf(kind), QSize(edge, edge), devicePixelRatioF()));
    setVisible(!text.isEmpty());
}
