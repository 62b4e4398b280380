#pragma once

#include "standins/faults/FaultOrder.h"

#include <QString>

#include <vector>

namespace wxserver {

/// The ways in which the server can misbehave, in the order of their table; in brackets what it
/// takes without an argument.
enum class FaultKind
{
    Status,      ///< answers with the status code of the argument (503)
    Stall,       ///< takes the request and never answers
    StallBody,   ///< sends the head and half of the body, then nothing more
    Trickle,     ///< sends so many bytes every tenth of a second (100)
    Truncate,    ///< leaves out the second half of the body, with a fitting length
    Damage,      ///< changes bytes in the middle of the body
    Empty,       ///< a list without any report
    Short,       ///< a list with so many METARs (5)
    Html,        ///< a page for people instead of data
    Error,       ///< one line with "#Error: " and the argument
    WrongLength, ///< announces so many bytes more than it sends (1000), then closes
    Cut,         ///< closes in the middle of the body
    Redirect,    ///< sends to the address of the argument ("/moved" + path)
    Bomb,        ///< gzip data that inflates to more than 256 MB
    Endless,     ///< a body without announced length, this many MB (80)
    Name         ///< file names that climb out of their folder, in the head and in the history list
};

/// One order to misbehave, for the paths of its pattern and the next `count` requests.
struct Fault : faults::Order
{
    FaultKind kind = FaultKind::Status;
};

/// Reads an order of paths: "/weather_*=status:404*2" or with "x2". The kinds are written status,
/// stall, stall-body, trickle, truncate, damage, empty, short, html, error, length, cut, redirect,
/// bomb, endless and name. False, with a reason, when it can't be read.
[[nodiscard]] bool parseFault(const QString& text, Fault& fault, QString& reason);
/// The name of a kind as parseFault reads it.
QString faultName(FaultKind kind);

/// The orders in force. Used on the server's thread.
class FaultList
{
public:
    void add(const Fault& fault) { m_faults.push_back(fault); }
    /// Takes back the orders with that pattern; an empty pattern takes back all.
    void clear(const QString& pattern);
    /// Gives the first order for a path and counts it down.
    [[nodiscard]] bool take(const QString& path, Fault& fault);
    bool empty() const { return m_faults.empty(); }

private:
    std::vector<Fault> m_faults;
};

} // namespace wxserver
