#include "standins/simulator/FaultSwitch.h"

#include "aviation/support/ScopedLock.h"

namespace simulator {

void FaultSwitch::set(const Fault& fault)
{
    const aviation::ScopedLock lock(m_mutex);
    m_fault = fault;
}

bool FaultSwitch::set(const QString& text)
{
    const std::optional<Fault> parsed = parseFault(text);
    if (parsed) {
        set(*parsed);
    }
    return parsed.has_value();
}

Fault FaultSwitch::take(int command, int id)
{
    const aviation::ScopedLock lock(m_mutex);
    if (!m_fault.concerns(command, id)) {
        return {};
    }
    const Fault taken = m_fault;
    m_fault.countDown();
    return taken;
}

} // namespace simulator
