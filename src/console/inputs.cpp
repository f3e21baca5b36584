#include "console/inputs.h"

#include <sstream>

#include "datafiles/data_file.h"
#include "editor/program_file.h"
#include "files/path.h"

namespace console {

DataFile::DataFile(const std::string& path, files::Content file) : content_(std::move(file.Bytes)) {
    if (!file.Problem.empty()) throw UsageError("\"" + path + "\" cannot be read: " + file.Problem);
    const auto scratch = std::make_unique<m8085::MemoryBytes>();
    std::istringstream stream(content_);
    if (!memedata::LoadDataFile(stream, *scratch))
        throw UsageError("\"" + path +
                         "\" is not a data file: it has a byte for an address beyond FFFF, or too large a number");
}

void DataFile::LoadInto(m8085::MemoryBytes& memory) const {
    std::istringstream stream(content_);
    memedata::LoadDataFile(stream, memory);
}

Inputs::Inputs(const Options& options, std::istream& standardInput) : options_(options), standardInput_(standardInput) {
    for (const std::string& path : options.DataFiles) dataFiles_.emplace_back(path, Read(path, files::LargestFile));
}

files::Content Inputs::Read(const std::string& path, std::size_t largest) const {
    if (path == "-") return files::ReadStream(standardInput_, largest);
    return files::ReadFileOrPipe(files::PathOf(path), largest);
}

std::unique_ptr<Simulation> Inputs::Assemble(const std::string& program) const {
    const files::Content file = Read(program, editor::LargestProgramFile);
    const std::string name = ShownName(program);
    return file.Problem.empty() ? console::Assemble(name, file.Bytes, options_.Origin.value_or(m8085::ProgramOrigin))
                                : Unreadable(name, file.Problem);
}

void Inputs::Prepare(m8085::MachineState& machine) const {
    for (const DataFile& file : dataFiles_) file.LoadInto(machine.Memory);
    for (const cases::Claim& setting : options_.Settings) setting.Store(machine);
}

std::string ShownName(const std::string& path) {
    return path == "-" ? "<stdin>" : path;
}

}  // namespace console
