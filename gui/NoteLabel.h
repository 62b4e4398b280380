#pragma once

#include <QString>
#include <QWidget>

class QLabel;

/// A line of plain text with a sign in front that tells its kind: a hint, the result of a test, or
/// what is wrong. Hidden while there is nothing to tell. Its colours are the palette's.
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
    QString text() const;
    Kind kind() const { return m_kind; }

private:
    QLabel* m_sign;
    QLabel* m_text;
    Kind m_kind = Kind::Info;
};
