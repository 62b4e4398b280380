#include "standins/wxserver/Fault.h"

#include <algorithm>
#include <array>

namespace wxserver {

namespace {

using faults::Argument;
using faults::Kind;

constexpr int kFirstStatus = 200;
constexpr int kLastStatus = 599;
constexpr int kMostBytes = 100'000'000;

/// In the order of FaultKind.
constexpr std::array kKinds{
    Kind{"status", Argument::Number, 503, "code", kFirstStatus, kLastStatus},
    Kind{"stall"},
    Kind{"stall-body"},
    Kind{"trickle", Argument::Number, 100, "bytes each 0.1 s", 0, kMostBytes},
    Kind{"truncate"},
    Kind{"damage"},
    Kind{"empty"},
    Kind{"short", Argument::Number, 5, "METARs", 0, kMostBytes},
    Kind{"html"},
    Kind{"error", Argument::Text, 0, "text"},
    Kind{"length", Argument::Number, 1000, "bytes too many", 0, kMostBytes},
    Kind{"cut"},
    Kind{"redirect", Argument::Text, 0, "address"},
    Kind{"bomb"},
    Kind{"endless", Argument::Number, 80, "MB", 0, kMostBytes},
    Kind{"name", Argument::Text, 0, "file name"},
};
static_assert(kKinds.size() == static_cast<std::size_t>(FaultKind::Name) + 1);

} // namespace

QString faultName(FaultKind kind)
{
    return QString::fromLatin1(kKinds[static_cast<std::size_t>(kind)].name);
}

bool parseFault(const QString& text, Fault& fault, QString& reason)
{
    const std::optional<faults::Order> order =
        faults::parseOrder(text, kKinds, faults::Target::Path, reason);
    if (order) {
        fault = {*order, static_cast<FaultKind>(order->row)};
    }
    return order.has_value();
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
    const auto found = std::find_if(m_faults.begin(), m_faults.end(),
                                    [&](const Fault& one) { return one.concernsPath(path); });
    if (found == m_faults.end()) {
        return false;
    }
    fault = *found;
    if (found->countDown()) {
        m_faults.erase(found);
    }
    return true;
}

} // namespace wxserver
