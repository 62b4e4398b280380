#include "app/base/OutsideText.h"

#include <algorithm>

namespace outsidetext {

namespace {

constexpr int kLongestLogText = 4096;

QString cutNote(int length, const char* unit)
{
    return QStringLiteral(" ... (%1 %2)").arg(QString::number(length), QString::fromLatin1(unit));
}

/// How a character that would break or hide a part of the line is shown; empty for all others.
QString shownAs(QChar character)
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

QString oneLine(const QString& text)
{
    QString line;
    line.reserve(text.size());
    for (const QChar character : text) {
        const QString shown = shownAs(character);
        if (shown.isEmpty()) {
            line += character;
        } else {
            line += shown;
        }
    }
    return line.toHtmlEscaped();
}

} // namespace

QString forLog(const QString& text)
{
    if (text.size() <= kLongestLogText) {
        return oneLine(text);
    }
    return oneLine(text.left(kLongestLogText)) + cutNote(text.size(), "characters");
}

QString forLog(const QByteArray& utf8)
{
    if (utf8.size() <= kLongestLogText) {
        return oneLine(QString::fromUtf8(utf8));
    }
    return oneLine(QString::fromUtf8(utf8.left(kLongestLogText))) + cutNote(utf8.size(), "bytes");
}

QString quoted(const QByteArray& utf8)
{
    constexpr int kLongestQuote = 80;
    constexpr int kLongestCharacter = 4; // bytes
    QString text = QString::fromUtf8(utf8.left(kLongestCharacter * kLongestQuote));
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return !c.isPrint(); }, QLatin1Char(' '));
    return text.simplified().left(kLongestQuote);
}

QString forTerminal(QString text)
{
    std::replace_if(
        text.begin(), text.end(),
        [](QChar c) { return c.category() == QChar::Other_Control && c != QLatin1Char('\n'); },
        QLatin1Char('?'));
    return text;
}

} // namespace outsidetext
