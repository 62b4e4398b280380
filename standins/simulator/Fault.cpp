#include "standins/simulator/Fault.h"

#include <QStringList>

#include <array>

namespace simulator {

namespace {

enum class Argument
{
    None,
    Number,
    NumberAndRest,
    Text
};

struct Row
{
    FaultKind kind;
    const char* name;
    Argument argument;
    int number; ///< when no argument is given
    const char* help;
};

constexpr std::array kRows{
    Row{FaultKind::None, "none", Argument::None, 0, "behaves"},
    Row{FaultKind::Silent, "silent", Argument::None, 0, "doesn't answer"},
    Row{FaultKind::Slow, "slow", Argument::Number, 1000, "slow:MS answers late"},
    Row{FaultKind::WrongId, "wrongid", Argument::None, 0, "answers with another message id"},
    Row{FaultKind::Refuse, "refuse", Argument::Text, 0, "refuse:TEXT refuses"},
    Row{FaultKind::Cut, "cut", Argument::NumberAndRest, 10,
        "cut:BYTES[,MS] cuts the answer, the rest follows after MS or never"},
    Row{FaultKind::Garbage, "garbage", Argument::Number, 40, "garbage:BYTES answers with no frame"},
    Row{FaultKind::Close, "close", Argument::None, 0, "closes in the middle of an answer"},
    Row{FaultKind::Drop, "drop", Argument::None, 0, "closes instead of an answer"},
    Row{FaultKind::WrongApi, "wrongapi", Argument::Text, 0,
        "wrongapi:TEXT greets with that version"},
    Row{FaultKind::HugeLength, "huge", Argument::None, 0,
        "announces 100 MB of data that never come"},
    Row{FaultKind::UdpSilent, "udpsilent", Argument::None, 0, "sends no datagrams"},
    Row{FaultKind::UdpGarbage, "udpgarbage", Argument::Number, 40,
        "udpgarbage:BYTES sends datagrams without a frame"},
    Row{FaultKind::UdpForeign, "udpforeign", Argument::None, 0,
        "sends datagrams from another address"}};

/// A number of at most seven digits.
std::optional<int> smallNumber(const QString& text)
{
    constexpr int kLimit = 9999999;
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    if (!isNumber || value < 0 || value > kLimit) {
        return std::nullopt;
    }
    return value;
}

/// Cuts everything from the last `mark` on and gives what stood behind it; null without a mark.
QString cutBehind(QString& text, char mark)
{
    const int at = text.lastIndexOf(QLatin1Char(mark));
    if (at < 0) {
        return {};
    }
    const QString behind = text.mid(at + 1);
    text.truncate(at);
    return behind;
}

bool readCount(QString& text, Fault& fault)
{
    if (!text.contains(QLatin1Char('*'))) {
        return true;
    }
    const std::optional<int> count = smallNumber(cutBehind(text, '*'));
    fault.count = count.value_or(0);
    return fault.count > 0;
}

bool readFilter(QString& text, Fault& fault)
{
    if (!text.contains(QLatin1Char('@'))) {
        return true;
    }
    const QStringList parts = cutBehind(text, '@').split(QLatin1Char('/'));
    const std::optional<int> id = smallNumber(parts.last());
    const std::optional<int> command = parts.size() == 2 ? smallNumber(parts.first()) : 0;
    fault.id = id.value_or(0);
    fault.command = command.value_or(0);
    return parts.size() <= 2 && id && command;
}

bool readNumbers(const QString& text, bool withRest, Fault& fault)
{
    const QStringList parts = text.split(QLatin1Char(','));
    const std::optional<int> number = smallNumber(parts.first());
    const bool hasRest = withRest && parts.size() == 2;
    const std::optional<int> rest = hasRest ? smallNumber(parts.last()) : -1;
    fault.number = number.value_or(0);
    fault.restAfterMs = rest.value_or(-1);
    return number && rest && (parts.size() == 1 || hasRest);
}

bool readArgument(const QString& text, const Row& row, Fault& fault)
{
    switch (row.argument) {
    case Argument::None:
        return false;
    case Argument::Text:
        fault.text = text;
        return true;
    default:
        return readNumbers(text, row.argument == Argument::NumberAndRest, fault);
    }
}

const Row* rowOf(const QString& name)
{
    for (const Row& row : kRows) {
        if (name.compare(QLatin1String(row.name), Qt::CaseInsensitive) == 0) {
            return &row;
        }
    }
    return nullptr;
}

} // namespace

bool Fault::concerns(int ofCommand, int ofId) const
{
    return kind != FaultKind::None && (command == 0 || command == ofCommand)
           && (id == 0 || id == ofId);
}

void Fault::countDown()
{
    if (count > 0 && --count == 0) {
        *this = Fault{};
    }
}

std::optional<Fault> parseFault(const QString& text)
{
    QString rest = text.trimmed();
    Fault fault;
    if (!readCount(rest, fault) || !readFilter(rest, fault)) {
        return std::nullopt;
    }
    const int colon = rest.indexOf(QLatin1Char(':'));
    const Row* row = rowOf(colon < 0 ? rest : rest.left(colon));
    if (row == nullptr) {
        return std::nullopt;
    }
    fault.kind = row->kind;
    fault.number = row->number;
    if (colon >= 0 && !readArgument(rest.mid(colon + 1), *row, fault)) {
        return std::nullopt;
    }
    return fault;
}

QString faultText(const Fault& fault)
{
    const Row& row = kRows[static_cast<std::size_t>(fault.kind)];
    QString text = QLatin1String(row.name);
    if (row.argument == Argument::Text && !fault.text.isEmpty()) {
        text += QLatin1Char(':') + fault.text;
    } else if (row.argument == Argument::Number || row.argument == Argument::NumberAndRest) {
        text += QLatin1Char(':') + QString::number(fault.number);
    }
    if (fault.restAfterMs >= 0) {
        text += QLatin1Char(',') + QString::number(fault.restAfterMs);
    }
    if (fault.id > 0) {
        text +=
            QLatin1Char('@')
            + (fault.command > 0 ? QString::number(fault.command) + QLatin1Char('/') : QString())
            + QString::number(fault.id);
    }
    return fault.count > 0 ? text + QLatin1Char('*') + QString::number(fault.count) : text;
}

QString faultHelp()
{
    QString text;
    for (const Row& row : kRows) {
        text += QStringLiteral("  %1 %2\n")
                    .arg(QLatin1String(row.name), -11)
                    .arg(QLatin1String(row.help));
    }
    return text;
}

} // namespace simulator
