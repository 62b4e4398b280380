#include "standins/wxserver/Fault.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace wxserver {

namespace {

struct KindName
{
    FaultKind kind;
    const char* name;
};

constexpr std::array kKindNames{
    KindName{FaultKind::Status, "status"},
    KindName{FaultKind::Stall, "stall"},
    KindName{FaultKind::StallBody, "stall-body"},
    KindName{FaultKind::Trickle, "trickle"},
    KindName{FaultKind::Truncate, "truncate"},
    KindName{FaultKind::Damage, "damage"},
    KindName{FaultKind::Empty, "empty"},
    KindName{FaultKind::Short, "short"},
    KindName{FaultKind::Html, "html"},
    KindName{FaultKind::Error, "error"},
    KindName{FaultKind::WrongLength, "length"},
    KindName{FaultKind::Cut, "cut"},
    KindName{FaultKind::Redirect, "redirect"},
    KindName{FaultKind::Bomb, "bomb"},
    KindName{FaultKind::Endless, "endless"},
    KindName{FaultKind::Name, "name"},
};

/// Cuts a final "x" with digits off; -1 when there is none.
int takeCount(QString& text)
{
    const int at = text.lastIndexOf(QLatin1Char('x'));
    bool isNumber = false;
    const int count = text.mid(at + 1).toInt(&isNumber);
    if (at < 0 || !isNumber || count < 1) {
        return -1;
    }
    text.truncate(at);
    return count;
}

bool needsNumber(FaultKind kind)
{
    return kind == FaultKind::Status || kind == FaultKind::Trickle || kind == FaultKind::Short
           || kind == FaultKind::WrongLength || kind == FaultKind::Endless;
}

bool argumentFits(const Fault& fault)
{
    if (!needsNumber(fault.kind) || fault.argument.isEmpty()) {
        return true;
    }
    bool isNumber = false;
    const int number = fault.argument.toInt(&isNumber);
    const bool isStatus = fault.kind == FaultKind::Status;
    return isNumber && number >= (isStatus ? 200 : 0) && number <= (isStatus ? 599 : 100'000'000);
}

} // namespace

QString faultName(FaultKind kind)
{
    const auto* const found = std::find_if(kKindNames.begin(), kKindNames.end(),
                                           [&](const KindName& row) { return row.kind == kind; });
    return QString::fromLatin1(found->name);
}

bool parseFault(const QString& text, Fault& fault, QString& reason)
{
    const int equals = text.indexOf(QLatin1Char('='));
    if (equals < 1) {
        reason = QStringLiteral("PATTERN=KIND is missing in: %1").arg(text);
        return false;
    }
    QString order = text.mid(equals + 1).trimmed();
    Fault read;
    read.pattern = text.left(equals).trimmed();
    read.remaining = takeCount(order);
    const QString name = order.section(QLatin1Char(':'), 0, 0);
    read.argument = order.section(QLatin1Char(':'), 1);
    const auto* const found =
        std::find_if(kKindNames.begin(), kKindNames.end(),
                     [&](const KindName& row) { return name == QLatin1String(row.name); });
    if (found == kKindNames.end()) {
        reason = QStringLiteral("unknown kind of fault: %1").arg(name);
        return false;
    }
    read.kind = found->kind;
    if (!argumentFits(read)) {
        reason = QStringLiteral("%1 doesn't take the argument %2").arg(name, read.argument);
        return false;
    }
    fault = read;
    return true;
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

void FaultList::clear(const QString& pattern)
{
    const auto isMeant = [&](const Fault& fault) {
        return pattern.isEmpty() || fault.pattern == pattern;
    };
    m_faults.erase(std::remove_if(m_faults.begin(), m_faults.end(), isMeant), m_faults.end());
}

bool FaultList::take(const QString& path, Fault& fault)
{
    const auto found = std::find_if(m_faults.begin(), m_faults.end(), [&](const Fault& one) {
        return matchesPattern(one.pattern, path);
    });
    if (found == m_faults.end()) {
        return false;
    }
    fault = *found;
    if (found->remaining > 0 && --found->remaining == 0) {
        m_faults.erase(found);
    }
    return true;
}

} // namespace wxserver
