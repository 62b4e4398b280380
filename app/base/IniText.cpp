#include "app/base/IniText.h"

#include "app/base/IniCharacters.h"

#include <QStringList>

#include <algorithm>
#include <string_view>

namespace initext {

namespace {

constexpr int kOctalBase = 8;

bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

/// Takes the quotes and escapes off a value and splits it at commas outside of quotes.
class ValueReader
{
public:
    explicit ValueReader(std::string_view text) : m_text(text) {}

    QStringList read()
    {
        skipBlanks();
        while (m_at < m_text.size()) {
            const char c = m_text[m_at++];
            if (c == '\\') {
                readEscape();
            } else if (c == '"') {
                toggleQuotes();
            } else if (c == ',' && !m_inQuotes) {
                endPart();
                skipBlanks();
            } else {
                readPlain(m_at - 1);
            }
        }
        endPart();
        return m_parts;
    }

private:
    void skipBlanks()
    {
        while (m_at < m_text.size() && isBlank(m_text[m_at])) {
            ++m_at;
        }
    }

    void toggleQuotes()
    {
        m_inQuotes = !m_inQuotes;
        m_wasQuoted = true;
        if (!m_inQuotes) {
            skipBlanks();
        }
    }

    void readPlain(std::size_t from)
    {
        m_at = std::min(m_text.find_first_of("\\\",", m_at), m_text.size());
        m_part += QString::fromUtf8(m_text.data() + from, static_cast<int>(m_at - from));
    }

    void readEscape()
    {
        if (m_at == m_text.size()) {
            return;
        }
        const char c = m_text[m_at++];
        const auto known = std::find_if(kEscapes.begin(), kEscapes.end(),
                                        [c](const auto& escape) { return escape[0] == c; });
        if (known != kEscapes.end()) {
            m_part += QLatin1Char((*known)[1]);
        } else if (c == 'x') {
            readNumber(kHexBase);
        } else if (digitValue(c, kOctalBase) >= 0) {
            --m_at;
            readNumber(kOctalBase);
        } else if (isLineEnd(c)) {
            skipSecondLineEnd(c);
        }
    }

    /// "\x" without a digit after it stands for nothing.
    void readNumber(int base)
    {
        unsigned code = 0;
        const std::size_t first = m_at;
        while (m_at < m_text.size() && digitValue(m_text[m_at], base) >= 0) {
            code = code * static_cast<unsigned>(base)
                   + static_cast<unsigned>(digitValue(m_text[m_at], base));
            ++m_at;
        }
        if (m_at > first) {
            m_part += QChar(static_cast<ushort>(code & 0xFFFFU));
        }
    }

    void skipSecondLineEnd(char first)
    {
        if (m_at < m_text.size() && isLineEnd(m_text[m_at]) && m_text[m_at] != first) {
            ++m_at;
        }
    }

    void endPart()
    {
        if (!m_wasQuoted) {
            int end = m_part.size();
            while (end > 0
                   && (m_part[end - 1] == QLatin1Char(' ') || m_part[end - 1] == QLatin1Char('\t')))
            {
                --end;
            }
            m_part.truncate(end);
        }
        m_parts.append(m_part);
        m_part.clear();
        m_wasQuoted = false;
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    bool m_inQuotes = false;
    bool m_wasQuoted = false;
    QString m_part;
    QStringList m_parts;
};

/// Contents of "@Name(...)", or a null string for another form.
QString typedContents(const QString& text, QLatin1String start)
{
    return text.startsWith(start) && text.endsWith(QLatin1Char(')'))
               ? text.mid(start.size(), text.size() - start.size() - 1)
               : QString();
}

QVariant valueOf(const QStringList& parts)
{
    const QString& text = parts.front();
    if (parts.size() > 1) {
        return parts;
    }
    if (!text.startsWith(QLatin1Char('@'))) {
        return text;
    }
    if (text.startsWith(QLatin1String("@@"))) {
        return text.mid(1);
    }
    if (text == QLatin1String("@Invalid()")) {
        return {};
    }
    const QString bytes = typedContents(text, QLatin1String("@ByteArray("));
    if (!bytes.isNull()) {
        return bytes.toLatin1();
    }
    const QString contents = typedContents(text, QLatin1String("@String("));
    return contents.isNull() ? QVariant(parts) : QVariant(contents);
}

/// One hexadecimal number of `digits` digits, or -1.
int hexAt(std::string_view text, std::size_t at, std::size_t digits)
{
    if (text.size() < at + digits) {
        return -1;
    }
    int code = 0;
    for (const char c : text.substr(at, digits)) {
        const int digit = digitValue(c, kHexBase);
        if (digit < 0) {
            return -1;
        }
        code = code * kHexBase + digit;
    }
    return code;
}

QString keyOf(std::string_view text)
{
    QString key;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool wide = text[at] == '%' && at + 1 < text.size() && text[at + 1] == 'U';
        const std::size_t first = at + (wide ? 2 : 1);
        const std::size_t digits = wide ? 4 : 2;
        const int code = text[at] == '%' ? hexAt(text, first, digits) : -1;
        if (code >= 0) {
            key += QChar(static_cast<ushort>(code));
            at = first + digits - 1;
        } else {
            key += text[at] == '\\' ? QLatin1Char('/') : QLatin1Char(text[at]);
        }
    }
    return key;
}

/// Cuts the text into logical lines: quotes and a backslash carry a line on, ";" outside of quotes
/// begins a comment.
class LineReader
{
public:
    explicit LineReader(std::string_view text) : m_text(text) {}

    /// False at the end. `line` begins with a character that is no blank.
    bool next(std::string_view& line)
    {
        if (!skipToLine()) {
            return false;
        }
        const std::size_t first = m_at;
        findEnd();
        line = m_text.substr(first, m_at - first);
        return true;
    }

private:
    bool skipToLine()
    {
        while (m_at < m_text.size()) {
            if (m_text[m_at] == ';') {
                m_at = std::min(m_text.find_first_of("\r\n", m_at), m_text.size());
            } else if (isBlank(m_text[m_at]) || isLineEnd(m_text[m_at])) {
                ++m_at;
            } else {
                return true;
            }
        }
        return false;
    }

    void findEnd()
    {
        bool inQuotes = false;
        for (; m_at < m_text.size(); ++m_at) {
            const char c = m_text[m_at];
            if (c == '\\') {
                skipEscaped();
            } else if (c == '"') {
                inQuotes = !inQuotes;
            } else if (!inQuotes && (isLineEnd(c) || c == ';')) {
                return;
            }
        }
    }

    /// Leaves m_at on the last escaped character. A line end of two characters counts as one.
    void skipEscaped()
    {
        const std::string_view behind = m_text.substr(m_at + 1, 2);
        m_at += behind == "\r\n" || behind == "\n\r" ? 2U : (behind.empty() ? 0U : 1U);
    }

    std::string_view m_text;
    std::size_t m_at = 0;
};

/// "[General]" has no prefix; a section that really has this name is written as "[%General]". Both
/// are compared as they stand: "[%25General]" is the section "%General".
QString sectionPrefix(std::string_view line)
{
    const std::string_view name = trimmed(line.substr(1, line.find(']') - 1));
    const QString written = QString::fromLatin1(name.data(), static_cast<int>(name.size()));
    if (written.compare(QLatin1String("general"), Qt::CaseInsensitive) == 0) {
        return {};
    }
    const bool marked = written.compare(QLatin1String("%general"), Qt::CaseInsensitive) == 0;
    return (marked ? written.mid(1) : keyOf(name)) + QLatin1Char('/');
}

/// A name of letters, digits and the signs that programs put between them.
bool isPlainName(std::string_view name)
{
    return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        const bool digit = c >= '0' && c <= '9';
        return letter || digit || std::string_view(" _-./%\\").find(c) != std::string_view::npos;
    });
}

bool hasControlCharacters(std::string_view line)
{
    return std::any_of(line.begin(), line.end(), [](char c) {
        return static_cast<unsigned char>(c) < ' ' && c != '\t' && !isLineEnd(c);
    });
}

/// The section's name, or what stands before "="; empty in a line that has neither.
std::string_view nameIn(std::string_view line)
{
    const bool section = line.front() == '[';
    const std::size_t end = line.find(section ? ']' : '=');
    const std::size_t first = section ? 1 : 0;
    return end == std::string_view::npos ? std::string_view()
                                         : trimmed(line.substr(first, end - first));
}

} // namespace

bool looksLikeIni(const QByteArray& text)
{
    const std::string_view bytes(text.constData(), static_cast<std::size_t>(text.size()));
    bool isEmpty = true;
    LineReader lines(withoutByteOrderMark(bytes));
    for (std::string_view line; lines.next(line); isEmpty = false) {
        // Between the bytes of a picture a short name and "=" come up as well.
        if (isPlainName(nameIn(line)) && !hasControlCharacters(line)) {
            return true;
        }
    }
    return isEmpty;
}

std::vector<Line> parse(const QByteArray& text)
{
    const std::string_view bytes(text.constData(), static_cast<std::size_t>(text.size()));
    std::vector<Line> all;
    QString prefix;
    LineReader lines(withoutByteOrderMark(bytes));
    for (std::string_view line; lines.next(line);) {
        const std::size_t equals = line.find('=');
        if (line.front() == '[') {
            prefix = sectionPrefix(line);
        } else if (equals != std::string_view::npos) {
            all.push_back({prefix + keyOf(trimmed(line.substr(0, equals))),
                           valueOf(ValueReader(line.substr(equals + 1)).read())});
        }
    }
    return all;
}

} // namespace initext
