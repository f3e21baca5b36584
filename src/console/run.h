#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "cases/claim.h"
#include "console/simulation.h"

namespace console {

// Takes the trace, in pieces of any length.
using TraceSink = std::function<void(std::string_view)>;

// How a program is run, and what is noted of the run.
struct RunSettings {
    std::uint64_t Limit = 0;         // in instructions; 0 for none
    std::vector<cases::Feed> Feeds;  // for different ports
    bool Profile = false;
    bool Traffic = false;         // through the ports
    TraceSink Trace = {};         // nothing is traced without one
    std::uint64_t MostLines = 0;  // of trace and traffic, while the run goes on; 0 for all

    bool WatchesPorts() const { return Traffic || !Feeds.empty(); }
};

// Runs the program as Run does, at full speed where each instruction need not be looked at. Throws an Interruption
// where a deferred signal comes meanwhile.
void Run(Simulation& simulation, const RunSettings& settings);

}  // namespace console
