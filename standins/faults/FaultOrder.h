#pragma once

#include <QString>

#include <cstddef>
#include <optional>
#include <span>

/// The one language in which the stand-ins are asked to misbehave:
///
///     [PATTERN=]NAME[:ARGUMENT][@[COMMAND/]ID][*COUNT]
///
/// The names with their arguments are each stand-in's own, and so is what an order concerns: paths
/// by a pattern before the name, or messages by their numbers after it. "x" may stand for the "*"
/// of the count. Pure.
namespace faults {

/// What may stand after a name and ":". Nothing after the ":" is the same as no argument.
enum class Argument
{
    None,
    Number,
    NumberAndRest, ///< "10,400": the rest follows after so many milliseconds
    Text
};

/// What an order concerns.
enum class Target
{
    Path,   ///< "PATTERN=" is required, and an "@" is part of the argument
    Message ///< "@[COMMAND/]ID" is optional, and a "=" is part of the argument
};

/// A way to misbehave: a row in the table of a stand-in.
struct Kind
{
    const char* name = nullptr; ///< in lower case; read in any
    Argument argument = Argument::None;
    int number = 0; ///< without an argument
    const char* help = "";
    int least = 0;
    int most = 9'999'999;
};
using Kinds = std::span<const Kind>;

/// What was ordered. Plain value.
struct Order
{
    std::size_t row = 0;  ///< of the table
    int number = 0;       ///< of the argument, or the kind's own
    int restAfterMs = -1; ///< -1: no rest
    QString text;         ///< of the argument; empty without one
    QString pattern;      ///< path that it concerns, see matchesPattern
    int count = -1;       ///< times to come, -1 without end
    int command = 0;      ///< concerns only messages of this command, 0 all
    int id = 0;           ///< concerns only messages of this id, 0 all

    bool concernsMessage(int ofCommand, int ofId) const;
    bool concernsPath(const QString& path) const;
    /// Counts one time; true when none is left.
    [[nodiscard]] bool countDown();
};

/// Nothing, with a reason, when the text is no order.
std::optional<Order> parseOrder(const QString& text, Kinds kinds, Target target, QString& reason);
/// The same back, for people.
QString orderText(const Order& order, Kinds kinds);
/// All names with what they do, a line each.
QString helpText(Kinds kinds);

/// "*" stands for any text, everything else for itself. Linear in the length of both texts.
bool matchesPattern(const QString& pattern, const QString& text);

} // namespace faults
