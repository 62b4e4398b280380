#pragma once

#include "standins/simulator/Fault.h"

#include <QMutex>

namespace simulator {

/// The fault that the ways in beside the bridge share with whoever switches it. They name what they
/// are asked for by the numbers of the bridge's messages, so that one text means the same fault on
/// every way in. For any thread.
class FaultSwitch
{
public:
    void set(const Fault& fault);
    /// Text as in parseFault(), "none" ends it. False if it is none.
    bool set(const QString& text);
    /// The fault that meets this message, counted down; of kind None if none does.
    Fault take(int command, int id);

private:
    QMutex m_mutex;
    Fault m_fault; ///< guarded by m_mutex
};

} // namespace simulator
