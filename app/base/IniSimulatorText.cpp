#include "app/base/IniCharacters.h"
#include "app/base/IniText.h"

#include <QTextCodec>

#include <algorithm>
#include <string_view>

namespace initext {

namespace {

std::string_view withoutComment(std::string_view line)
{
    bool inQuotes = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
        inQuotes = inQuotes != (line[at] == '"');
        if (!inQuotes && (line[at] == ';' || line.substr(at, 2) == "//")) {
            return line.substr(0, at);
        }
    }
    return line;
}

QString textOf(std::string_view bytes)
{
    const auto size = static_cast<int>(bytes.size());
    QTextCodec::ConverterState state;
    const QString text = QTextCodec::codecForName("UTF-8")->toUnicode(bytes.data(), size, &state);
    const bool valid = state.invalidChars == 0 && state.remainingChars == 0;
    return valid ? text : QString::fromLatin1(bytes.data(), size);
}

} // namespace

std::vector<Line> parseSimulator(const QByteArray& text)
{
    std::vector<Line> all;
    std::string_view rest =
        withoutByteOrderMark({text.constData(), static_cast<std::size_t>(text.size())});
    QString prefix;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
        const std::string_view line = trimmed(withoutComment(rest.substr(0, end)));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        const std::size_t equals = line.find('=');
        if (!line.empty() && line.front() == '[') {
            prefix = textOf(trimmed(line.substr(1, line.find(']') - 1))) + QLatin1Char('/');
        } else if (equals != std::string_view::npos) {
            all.push_back({prefix + textOf(trimmed(line.substr(0, equals))),
                           textOf(trimmed(line.substr(equals + 1)))});
        }
    }
    return all;
}

} // namespace initext
