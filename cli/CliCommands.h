#pragma once

#include <iosfwd>

struct CliOptions;

/// The streams of one call.
struct CliStreams
{
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
};

/// The commands. Each writes its answer to `out` and throws CliFailure when it can't.
void runDecode(const CliOptions& options, CliStreams& streams);
void runStore(const CliOptions& options, CliStreams& streams);
void runNearest(const CliOptions& options, CliStreams& streams);
void runStations(const CliOptions& options, CliStreams& streams);
void runSearch(const CliOptions& options, CliStreams& streams);
void runPrepare(const CliOptions& options, CliStreams& streams);
void runWind(const CliOptions& options, CliStreams& streams);
