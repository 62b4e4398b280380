#pragma once

#include <QString>
#include <QWidget>

class QLabel;

/// A line of plain text with a sign before it for its kind: a hint, the result of a test, or what
/// is wrong. Hidden while there is nothing to say. Its colours are the palette's.
class NoteLabel : public QWidget
{
    Q_OBJECT
public:
    enum class Kind
    {
        Info,
        Good,
        Warning,
        Bad
    };

    explicit NoteLabel(QWidget* parent = nullptr);

    /// An empty text hides the note.
    void setNote(Kind kind, const QString& text);
    void clear() { setNote(Kind::Info, QString()); }

private:
    QLabel* m_sign;
    QLabel* m_text;
};
