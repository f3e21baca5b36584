#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "cases/claim.h"
#include "cases/place.h"
#include "console/memory_file.h"

namespace console {

// What the user asked for cannot be done. The text says why.
struct UsageError : std::runtime_error {
    using runtime_error::runtime_error;
};

// What --show asks for.
struct View {
    enum class Kind { Registers, Changed, Traffic, Place };
    Kind What = Kind::Registers;
    cases::Place Where;  // of Place
};

// Paths are as the user wrote them. "-" as a file to be read is standard input, and an empty path to be written is
// standard output.
struct Options {
    std::vector<std::string> Programs;
    bool CheckOnly = false;
    bool Json = false;
    std::optional<std::uint64_t> Limit;  // instructions; 0 for none
    std::optional<std::string> Listing;
    std::optional<std::string> Trace;
    std::optional<std::uint64_t> TraceLines;  // of traffic, too; 0 for all
    std::optional<std::int32_t> Origin;       // nothing for that of all programs
    bool Profile = false;
    std::vector<cases::Feed> Feeds;
    std::vector<std::string> DataFiles;
    std::vector<cases::Claim> Settings;
    std::vector<View> Views;
    std::vector<cases::Claim> Expectations;
    std::vector<MemoryFile> MemoryFiles;

    bool Test = false;                 // by the cases of each program
    std::optional<std::string> Cases;  // the file that says those of all programs
    std::optional<std::string> JUnit;

    bool Convert = false;             // into this language, instead of anything else
    bool Decimal = false;             // digits alone are decimal there
    std::optional<std::string> Data;  // the file for what the program defines in memory
    bool Disassemble = false;         // bytes into a program, instead of anything else

    bool RunsCases() const { return Test || Cases; }

    bool ShowsTraffic() const;

    // All files that are read.
    std::vector<std::string> Inputs() const;

    // Whether a listing or a trace takes the place of the report on standard output.
    bool PrintsListingOrTrace() const { return Listing == "" || Trace == ""; }
};

struct CommandLine {
    std::optional<Options> Wanted;
    std::string Answer;  // to --help and --version, where nothing else is wanted
};

// Reads the arguments, the program's own name not among them. Throws a UsageError or a cases::Misread where they make
// no sense.
CommandLine ReadCommandLine(std::vector<std::string> arguments);

}  // namespace console
