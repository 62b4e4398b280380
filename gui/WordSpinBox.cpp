#include "gui/WordSpinBox.h"

WordSpinBox::WordSpinBox(const QString& word, QWidget* parent) : QSpinBox(parent), m_word(word) {}

QString WordSpinBox::textFromValue(int value) const
{
    return value == maximum() ? m_word : QSpinBox::textFromValue(value);
}

int WordSpinBox::valueFromText(const QString& text) const
{
    const bool isWord = text.trimmed().compare(m_word, Qt::CaseInsensitive) == 0;
    return isWord ? maximum() : QSpinBox::valueFromText(text);
}

QValidator::State WordSpinBox::validate(QString& text, int& position) const
{
    if (text.compare(m_word, Qt::CaseInsensitive) == 0) {
        return QValidator::Acceptable;
    }
    if (m_word.startsWith(text, Qt::CaseInsensitive)) {
        return QValidator::Intermediate;
    }
    return QSpinBox::validate(text, position);
}
