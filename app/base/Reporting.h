#pragma once

#include <QString>

#include <functional>

/// A line for log file and debug dock, its level one of loglevel. It is rich text: parts from
/// outside are escaped.
using LogFunction = std::function<void(const QString& text, int level)>;
/// 0 of 0 with an empty text hides the progress bar, with a text it is busy.
using ProgressFunction = std::function<void(qlonglong value, qlonglong total, const QString& text)>;

/// Where the parts of the program put what the user is to see. Both are callable from any thread
/// and return at once.
struct Reporting
{
    LogFunction log;
    ProgressFunction progress;
};
