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
void RunDecode(const CliOptions& options, CliStreams& streams);
void RunStore(const CliOptions& options, CliStreams& streams);
void RunNearest(const CliOptions& options, CliStreams& streams);
void RunStations(const CliOptions& options, CliStreams& streams);
void RunSearch(const CliOptions& options, CliStreams& streams);
void RunPrepare(const CliOptions& options, CliStreams& streams);
void RunWind(const CliOptions& options, CliStreams& streams);
