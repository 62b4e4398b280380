#pragma once

#include "app/base/Job.h"

#include <functional>

/// Posts a job to one of the workers and starts it; while the program ends it does nothing.
using PostJob = std::function<void(const Job&)>;

/// Both workers, to whoever needs both. Main thread.
struct JobPosts
{
    PostJob toSimulator;
    PostJob toWeather;
};
