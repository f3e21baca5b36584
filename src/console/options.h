#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "console/places.h"

namespace console {

// What --show asks for.
struct View {
    enum class Kind { Registers, Ports, Changed, Memory };
    Kind What = Kind::Registers;
    memedata::AddressRange Range;  // of Memory
};

// A file to be written from memory. Without a range it gets the assembled program.
struct MemoryFile {
    enum class Format { DataFile, Binary, IntelHex };
    Format As = Format::DataFile;
    std::string Path;
    std::vector<memedata::AddressRange> Ranges;
};

// Paths are as the user wrote them; "-" as a program is standard input, and an empty path standard output.
struct Options {
    std::vector<std::string> Programs;
    bool CheckOnly = false;
    bool Json = false;
    std::uint64_t Limit = 1'000'000'000;  // instructions; 0 for none
    std::optional<std::string> Listing;
    std::optional<std::string> Trace;
    std::vector<std::string> DataFiles;
    std::vector<Setting> Settings;
    std::vector<View> Views;
    std::vector<Expectation> Expectations;
    std::vector<MemoryFile> MemoryFiles;
};

struct CommandLine {
    std::optional<Options> Wanted;
    std::string Answer;  // to --help and --version, where nothing else is wanted
};

// Reads the arguments, the program's own name not among them. Throws a UsageError where they make no sense.
CommandLine ReadCommandLine(std::vector<std::string> arguments);

}  // namespace console
