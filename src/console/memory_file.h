#pragma once

#include <string>
#include <vector>

#include "console/simulation.h"
#include "datafiles/data_file.h"

namespace console {

// A file to be written from memory. Without a range it gets the assembled program.
struct MemoryFile {
    enum class Format { DataFile, Binary, IntelHex };
    Format As = Format::DataFile;
    std::string Path;
    std::vector<memedata::AddressRange> Ranges;  // at most one, but for a data file
};

// The file's whole content. Intel HEX has sixteen bytes in a record, and lines that end in CR LF.
std::string Compose(const MemoryFile& file, const Simulation& simulation);

}  // namespace console
