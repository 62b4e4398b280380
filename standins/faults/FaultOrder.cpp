#include "standins/faults/FaultOrder.h"

#include <QStringList>

#include <algorithm>

namespace faults {

namespace {

constexpr int kLargestNumber = 100'000'000;

std::optional<int> numberFrom(const QString& text)
{
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    return isNumber && value >= 0 && value <= kLargestNumber ? std::optional(value) : std::nullopt;
}

/// Cuts a final "*" or "x" with a number off; -1 when there is none.
int takeCount(QString& text)
{
    const int at = std::max(text.lastIndexOf(QLatin1Char('*')), text.lastIndexOf(QLatin1Char('x')));
    const int count = at < 0 ? 0 : numberFrom(text.mid(at + 1)).value_or(0);
    if (count < 1) {
        return -1;
    }
    text.truncate(at);
    return count;
}

/// Cuts "@[COMMAND/]ID" off. False for an "@" with anything else.
bool takeNumbersOfMessage(QString& text, Order& order)
{
    const int at = text.lastIndexOf(QLatin1Char('@'));
    if (at < 0) {
        return true;
    }
    const QStringList parts = text.mid(at + 1).split(QLatin1Char('/'));
    const std::optional<int> id = numberFrom(parts.last());
    const std::optional<int> command = parts.size() == 2 ? numberFrom(parts.first()) : 0;
    text.truncate(at);
    order.id = id.value_or(0);
    order.command = command.value_or(0);
    return parts.size() <= 2 && id && command;
}

bool readNumbers(const QString& text, const Kind& kind, Order& order)
{
    const QStringList parts = text.split(QLatin1Char(','));
    const int most = kind.argument == Argument::NumberAndRest ? 2 : 1;
    const std::optional<int> number = numberFrom(parts.first());
    const std::optional<int> rest = parts.size() > 1 ? numberFrom(parts.last()) : -1;
    if (parts.size() > most || !number || !rest || *number < kind.least || *number > kind.most) {
        return false;
    }
    order.number = *number;
    order.restAfterMs = *rest;
    return true;
}

bool readArgument(const QString& text, const Kind& kind, Order& order)
{
    switch (kind.argument) {
    case Argument::None:
        return text.isEmpty();
    case Argument::Text:
        order.text = text;
        return true;
    default:
        return text.isEmpty() || readNumbers(text, kind, order);
    }
}

/// Cuts "PATTERN=" off; false without one.
bool takePattern(QString& text, Order& order)
{
    const int equals = text.indexOf(QLatin1Char('='));
    if (equals < 1) {
        return false;
    }
    order.pattern = text.left(equals).trimmed();
    text = text.mid(equals + 1).trimmed();
    return true;
}

} // namespace

bool Order::concernsMessage(int ofCommand, int ofId) const
{
    return (command == 0 || command == ofCommand) && (id == 0 || id == ofId);
}

bool Order::concernsPath(const QString& path) const
{
    return matchesPattern(pattern, path);
}

bool Order::countDown()
{
    return count > 0 && --count == 0;
}

std::optional<Order> parseOrder(const QString& text, Kinds kinds, Target target, QString& reason)
{
    QString rest = text.trimmed();
    Order order;
    if (target == Target::Path && !takePattern(rest, order)) {
        reason = QStringLiteral("PATTERN=KIND is missing in: %1").arg(text);
        return std::nullopt;
    }
    order.count = takeCount(rest);
    if (target == Target::Message && !takeNumbersOfMessage(rest, order)) {
        reason = QStringLiteral("no numbers of a message: %1").arg(text);
        return std::nullopt;
    }
    const QString name = rest.section(QLatin1Char(':'), 0, 0);
    const QString argument = rest.section(QLatin1Char(':'), 1);
    const auto found = std::find_if(kinds.begin(), kinds.end(), [&](const Kind& kind) {
        return name.compare(QLatin1String(kind.name), Qt::CaseInsensitive) == 0;
    });
    if (found == kinds.end()) {
        reason = QStringLiteral("unknown kind of fault: %1").arg(name);
        return std::nullopt;
    }
    order.row = static_cast<std::size_t>(found - kinds.begin());
    order.number = found->number;
    if (!readArgument(argument, *found, order)) {
        reason = QStringLiteral("%1 doesn't take the argument %2").arg(name, argument);
        return std::nullopt;
    }
    return order;
}

QString orderText(const Order& order, Kinds kinds)
{
    const Kind& kind = kinds[order.row];
    QString text = order.pattern.isEmpty() ? QString() : order.pattern + QLatin1Char('=');
    text += QLatin1String(kind.name);
    if (kind.argument == Argument::Text && !order.text.isEmpty()) {
        text += QLatin1Char(':') + order.text;
    } else if (kind.argument == Argument::Number || kind.argument == Argument::NumberAndRest) {
        text += QLatin1Char(':') + QString::number(order.number);
    }
    if (order.restAfterMs >= 0) {
        text += QLatin1Char(',') + QString::number(order.restAfterMs);
    }
    if (order.id > 0) {
        text += QLatin1Char('@');
        text += order.command > 0 ? QString::number(order.command) + QLatin1Char('/') : QString();
        text += QString::number(order.id);
    }
    return order.count > 0 ? text + QLatin1Char('*') + QString::number(order.count) : text;
}

QString helpText(Kinds kinds)
{
    QString text;
    for (const Kind& kind : kinds) {
        text += QStringLiteral("  %1 %2\n")
                    .arg(QLatin1String(kind.name), -11)
                    .arg(QLatin1String(kind.help));
    }
    return text;
}

bool matchesPattern(const QString& pattern, const QString& text)
{
    const QStringList pieces = pattern.split(QLatin1Char('*'));
    if (pieces.size() == 1) {
        return pattern == text;
    }
    if (!text.startsWith(pieces.first())) {
        return false;
    }
    int at = pieces.first().size();
    for (int i = 1; i < pieces.size() - 1; ++i) {
        const int found = text.indexOf(pieces[i], at);
        if (found < 0) {
            return false;
        }
        at = found + pieces[i].size();
    }
    return text.size() - at >= pieces.last().size() && text.endsWith(pieces.last());
}

} // namespace faults
