#include "sim/LogText.h"

namespace {

constexpr int kLongestText = 4096;

QString CutNote(int length, const char* unit)
{
    return QStringLiteral(" ... (%1 %2)").arg(QString::number(length), QString::fromLatin1(unit));
}

/// How a character that would break or hide a part of the line is shown; empty for all others.
QString Shown(QChar character)
{
    switch (character.unicode()) {
    case '\t':
        return {};
    case '\n':
        return QStringLiteral("\\n");
    case '\r':
        return QStringLiteral("\\r");
    default:
        break;
    }
    const QChar::Category category = character.category();
    const bool breaks = category == QChar::Other_Control || category == QChar::Separator_Line
                        || category == QChar::Separator_Paragraph;
    constexpr int kDigits = 4;
    constexpr int kHex = 16;
    return breaks ? QStringLiteral("\\u%1").arg(static_cast<uint>(character.unicode()), kDigits,
                                                kHex, QLatin1Char('0'))
                  : QString();
}

QString OneLine(const QString& text)
{
    QString line;
    line.reserve(text.size());
    for (const QChar character : text) {
        const QString shown = Shown(character);
        if (shown.isEmpty()) {
            line += character;
        } else {
            line += shown;
        }
    }
    return line.toHtmlEscaped();
}

} // namespace

QString LogText(const QString& text)
{
    if (text.size() <= kLongestText) {
        return OneLine(text);
    }
    return OneLine(text.left(kLongestText)) + CutNote(text.size(), "characters");
}

QString LogText(const QByteArray& utf8)
{
    if (utf8.size() <= kLongestText) {
        return OneLine(QString::fromUtf8(utf8));
    }
    return OneLine(QString::fromUtf8(utf8.left(kLongestText))) + CutNote(utf8.size(), "bytes");
}
