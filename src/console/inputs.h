#pragma once

#include <istream>
#include <memory>
#include <string>
#include <vector>

#include "console/options.h"
#include "console/simulation.h"
#include "files/file_reader.h"

namespace console {

// A data file that is known to be one.
class DataFile {
public:
    // Throws a UsageError where it could not be read or is not one. The path is for the message.
    DataFile(const std::string& path, files::Content file);

    void LoadInto(m8085::MemoryBytes& memory) const;

private:
    std::string content_;
};

// What is read, as the options say, and what every run begins with.
class Inputs {
public:
    // Reads the data files. Throws a UsageError where one cannot be read. What the references name must outlive it.
    Inputs(const Options& options, std::istream& standardInput);

    // Reads a file, a pipe, or standard input for "-".
    files::Content Read(const std::string& path, std::size_t largest) const;

    // Assembles the program into a machine of its own. Of one that cannot be read the simulation says so.
    std::unique_ptr<Simulation> Assemble(const std::string& program) const;

    // Loads the data files and stores the settings.
    void Prepare(m8085::MachineState& machine) const;

private:
    const Options& options_;
    std::istream& standardInput_;
    std::vector<DataFile> dataFiles_;
};

// The name by which a file that is read is shown.
std::string ShownName(const std::string& path);

}  // namespace console
