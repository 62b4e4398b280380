#pragma once

#include "sim/SimResult.h"

/// Polls, or other calls of one kind, that fail in a row. Five end the link: of a simulator that
/// hangs or is killed some ways in say nothing, each of their calls just fails or isn't answered.
class PollFailures
{
public:
    /// The result of a poll, or simresult::kTimeout for the fifth failure in a row and after it.
    int count(int result)
    {
        constexpr int kMost = 5;
        const bool answered = result == simresult::kNone || result == simresult::kPaused
                              || result == simresult::kCloudReply;
        m_inARow = answered ? 0 : m_inARow + 1;
        return m_inARow >= kMost ? simresult::kTimeout : result;
    }

private:
    int m_inARow = 0;
};
