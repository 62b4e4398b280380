#include "app/base/IniCharacters.h"
#include "app/base/IniText.h"

#include <QByteArrayList>
#include <QStringList>

#include <algorithm>

namespace initext {

namespace {

QByteArray escapedUnit(ushort unit)
{
    return "\\x" + QByteArray::number(static_cast<uint>(unit), kHexBase);
}

/// A hexadecimal digit straight after a number escape would be read as part of it.
QByteArray escapedText(const QString& text)
{
    QByteArray escaped;
    bool behindNumber = false;
    for (const QChar character : text) {
        const ushort unit = character.unicode();
        const char c = static_cast<char>(unit & 0x7FU);
        const auto named = std::find_if(kEscapes.begin(), kEscapes.end(), [unit](const auto& pair) {
            return unit == static_cast<ushort>(pair[1]) && pair[0] != '?' && pair[0] != '\'';
        });
        const bool asNumber =
            unit < 0x20 || unit >= 0x7F || (behindNumber && digitValue(c, kHexBase) >= 0);
        if (named != kEscapes.end()) {
            escaped.append('\\').append((*named)[0]);
        } else if (unit == 0) {
            escaped += "\\0";
        } else {
            escaped += asNumber ? escapedUnit(unit) : QByteArray(1, c);
        }
        behindNumber = asNumber && named == kEscapes.end();
    }
    return escaped;
}

QByteArray quotedIfNeeded(const QString& text)
{
    const QByteArray escaped = escapedText(text);
    const bool quotes = escaped.contains(';') || escaped.contains(',') || escaped.contains('=')
                        || escaped.startsWith(' ') || escaped.endsWith(' ')
                        || text.endsWith(QLatin1Char('\t')); // its escape alone is trimmed
    return quotes ? '"' + escaped + '"' : escaped;
}

QString plainText(const QVariant& value)
{
    const QString text = value.toString();
    if (text.contains(QChar(QChar::Null))) {
        return QLatin1String("@String(") + text + QLatin1Char(')');
    }
    return text.startsWith(QLatin1Char('@')) ? QLatin1Char('@') + text : text;
}

QByteArray listText(const QStringList& parts)
{
    QByteArrayList texts;
    for (const QString& part : parts) {
        texts.append(quotedIfNeeded(part));
    }
    return texts.join(", ");
}

} // namespace

QByteArray valueText(const QVariant& value)
{
    if (!value.isValid()) {
        return "@Invalid()";
    }
    if (value.type() == QVariant::StringList) {
        return listText(value.toStringList());
    }
    if (value.type() == QVariant::ByteArray) {
        const QByteArray bytes = value.toByteArray();
        return quotedIfNeeded(QLatin1String("@ByteArray(")
                              + QLatin1String(bytes.constData(), bytes.size()) + QLatin1Char(')'));
    }
    return quotedIfNeeded(plainText(value));
}

QByteArray keyText(const QString& key)
{
    QByteArray text;
    for (const QChar character : key) {
        const ushort unit = character.unicode();
        const char c = static_cast<char>(unit & 0x7FU);
        const bool plain = unit < 0x80
                           && (digitValue(c, 10) >= 0 || (c >= 'a' && c <= 'z')
                               || (c >= 'A' && c <= 'Z') || c == '_' || c == '-' || c == '.');
        if (plain) {
            text += c;
        } else if (unit == '/') {
            text += '\\';
        } else {
            const bool wide = unit > 0xFF;
            text += wide ? "%U" : "%";
            text += QByteArray::number(static_cast<uint>(unit), kHexBase)
                        .toUpper()
                        .rightJustified(wide ? 4 : 2, '0');
        }
    }
    return text;
}

} // namespace initext
