#pragma once

#include <QSpinBox>
#include <QString>

/// A spin box whose highest value is shown as a word, such as "random" or "unlimited".
class WordSpinBox : public QSpinBox
{
    Q_OBJECT
public:
    explicit WordSpinBox(const QString& word, QWidget* parent = nullptr);

protected:
    QString textFromValue(int value) const override;
    int valueFromText(const QString& text) const override;
    QValidator::State validate(QString& text, int& position) const override;

private:
    QString m_word;
};
