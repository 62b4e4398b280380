#pragma once

#include "aviation/pattern/Syntax.h"

namespace aviation::pattern {

/// Instructions of a matching program. Each names the one after it, so the program is a graph
/// without cycles: the depth of a match is bounded by the pattern and never by the text.
enum class Op
{
    Accept, ///< the end of the program, or of one turn of a Loop
    Begin,  ///< only at the beginning of the text
    Run,    ///< min to max characters of a set, as many as possible
    Open,   ///< a group begins
    Close,  ///< a group ends
    Branch, ///< `next`, or when that leads nowhere `other`
    Loop    ///< turns of `other` while they match, then `next`, which can't fail
};

struct Instruction
{
    Op op = Op::Accept;
    int next = 0;
    int other = 0;
    CharSet set{};          ///< Run
    int min = 0;            ///< Run
    int max = 0;            ///< Run, kUnbounded without a limit
    int group = 0;          ///< Open and Close
    bool givesBack = false; ///< Run: a shorter run may succeed where the longest one failed
    bool restores = false;  ///< Close: another way to match may leave the group out
};

/// A compiled pattern. Every instruction stands after those that it leads to.
template <std::size_t Capacity>
struct Program
{
    std::array<Instruction, Capacity> code{};
    std::size_t count = 0;
    int entry = 0;
    int groups = 1;
    bool anchored = false; ///< every way to match starts with ^
    int minLength = 0;     ///< of the whole match
    int maxLength = 0;     ///< of the whole match, or kUnbounded

    constexpr const Instruction& at(int index) const
    {
        return code[static_cast<std::size_t>(index)];
    }
    constexpr int add(const Instruction& instruction)
    {
        code.at(count) = instruction;
        return static_cast<int>(count++);
    }
};

/// Turns a syntax tree into a program, from its end to its beginning.
template <std::size_t Capacity>
class Compiler
{
public:
    constexpr explicit Compiler(const Tree<Capacity>& tree) : m_tree(tree) {}

    constexpr Program<Capacity> compile()
    {
        const int accept = m_program.add({});
        m_program.groups = m_tree.groups;
        m_program.entry = emit(m_tree.root, accept, false);
        for (std::size_t at = 0; at < m_program.count; ++at) {
            markRun(m_program.code[at]);
        }
        measure();
        return m_program;
    }

private:
    constexpr int emit(int part, int next, bool optional)
    {
        const PartNode& node = m_tree.at(part);
        switch (node.part) {
        case Part::Empty:
            return next;
        case Part::Begin:
            return m_program.add({.op = Op::Begin, .next = next});
        case Part::Class:
            return emitRun(node.set, 1, 1, next);
        case Part::Sequence:
            return emit(node.left, emit(node.right, next, optional), optional);
        case Part::Either:
            return emitBranch(emit(node.left, next, true), emit(node.right, next, true));
        case Part::Group:
            return emitGroup(node, next, optional);
        case Part::Repeat:
            break;
        }
        return emitRepeat(node, next, optional);
    }

    constexpr int emitRun(const CharSet& set, int min, int max, int next)
    {
        return m_program.add({.op = Op::Run, .next = next, .set = set, .min = min, .max = max});
    }

    constexpr int emitBranch(int next, int other)
    {
        return m_program.add({.op = Op::Branch, .next = next, .other = other});
    }

    constexpr int emitGroup(const PartNode& node, int next, bool optional)
    {
        const int close = m_program.add(
            {.op = Op::Close, .next = next, .group = node.group, .restores = optional});
        const int inner = emit(node.left, close, optional);
        return m_program.add({.op = Op::Open, .next = inner, .group = node.group});
    }

    constexpr int emitRepeat(const PartNode& node, int next, bool optional)
    {
        const PartNode& inner = m_tree.at(node.left);
        if (inner.part == Part::Class) {
            return emitRun(inner.set, node.min, node.max, next);
        }
        int entry = node.max == kUnbounded ? emitLoop(node.left, next) : next;
        for (int turn = node.min; turn < node.max; ++turn) {
            entry = emitBranch(emit(node.left, entry, true), next);
        }
        for (int turn = 0; turn < node.min; ++turn) {
            entry = emit(node.left, entry, optional);
        }
        return entry;
    }

    constexpr int emitLoop(int part, int next)
    {
        if (!alwaysAccepts(next)) {
            throw "an endless repetition of a group must end the pattern";
        }
        const int turnEnd = m_program.add({});
        const int turn = emit(part, turnEnd, true);
        return m_program.add({.op = Op::Loop, .next = next, .other = turn});
    }

    constexpr bool alwaysAccepts(int index) const
    {
        const Instruction& at = m_program.at(index);
        return at.op == Op::Accept || (at.op == Op::Close && alwaysAccepts(at.next));
    }

    /// Giving characters back is pointless when nothing after the run can start with one of them.
    constexpr void markRun(Instruction& run)
    {
        if (run.op == Op::Run && run.min != run.max) {
            run.givesBack = canTake(run.next, run);
        }
    }

    /// Whether the program from `index` on can make use of a character that `run` gave back. An
    /// endless run of the same set would take all of it again and end where `run` had ended, so it
    /// makes no use of it: without this, blanks around an optional word cost quadratic time.
    constexpr bool canTake(int index, const Instruction& run) const
    {
        const Instruction& at = m_program.at(index);
        switch (at.op) {
        case Op::Accept:
            return false;
        case Op::Begin:
            return true;
        case Op::Run:
            if (at.set.overlaps(run.set) && !takesAllAgain(at, run)) {
                return true;
            }
            return at.min == 0 && canTake(at.next, run);
        case Op::Open:
        case Op::Close:
            break;
        case Op::Branch:
        case Op::Loop:
            return canTake(at.next, run) || canTake(at.other, run);
        }
        return canTake(at.next, run);
    }

    static constexpr bool takesAllAgain(const Instruction& later, const Instruction& run)
    {
        return later.set == run.set && later.min == 0 && later.max == kUnbounded
               && run.max == kUnbounded;
    }

    /// Lengths and anchoring, from the end of the program to its entry.
    constexpr void measure()
    {
        std::array<Lengths, Capacity> lengths{};
        for (std::size_t at = 0; at < m_program.count; ++at) {
            const Instruction& instruction = m_program.code[at];
            const Lengths& next = lengths[static_cast<std::size_t>(instruction.next)];
            const Lengths& other = lengths[static_cast<std::size_t>(instruction.other)];
            lengths[at] = measured(instruction, next, other);
        }
        const Lengths& whole = lengths[static_cast<std::size_t>(m_program.entry)];
        m_program.minLength = whole.min;
        m_program.maxLength = whole.max;
        m_program.anchored = whole.anchored;
    }

    struct Lengths
    {
        int min = 0;
        int max = 0;
        bool anchored = false;
    };

    static constexpr Lengths measured(const Instruction& at, const Lengths& next,
                                      const Lengths& other)
    {
        switch (at.op) {
        case Op::Accept:
            return {};
        case Op::Begin:
            return {next.min, next.max, true};
        case Op::Run:
            return {next.min + at.min, sum(next.max, at.max), false};
        case Op::Open:
        case Op::Close:
            break;
        case Op::Branch:
            return {next.min < other.min ? next.min : other.min, larger(next.max, other.max),
                    next.anchored && other.anchored};
        case Op::Loop:
            return {next.min, kUnbounded, false};
        }
        return next;
    }

    static constexpr int sum(int a, int b)
    {
        return a == kUnbounded || b == kUnbounded ? kUnbounded : a + b;
    }

    static constexpr int larger(int a, int b)
    {
        if (a == kUnbounded || b == kUnbounded) {
            return kUnbounded;
        }
        return a > b ? a : b;
    }

    const Tree<Capacity>& m_tree;
    Program<Capacity> m_program;
};

/// The program of a pattern text.
template <std::size_t Capacity>
consteval Program<Capacity> compile(std::wstring_view text)
{
    const Tree<Capacity> tree = Parser<Capacity>(text).parse();
    return Compiler<Capacity>(tree).compile();
}

} // namespace aviation::pattern
