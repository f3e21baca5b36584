#include "console/console.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <sstream>

#include "console/image.h"
#include "console/interruption.h"
#include "console/listing.h"
#include "console/options.h"
#include "console/report.h"
#include "console/simulation.h"
#include "console/text.h"
#include "editor/program_file.h"
#include "files/file_reader.h"
#include "files/file_writer.h"
#include "files/path.h"

namespace console {

namespace {

std::string ReadDataFile(const std::string& path) {
    files::Content content = files::ReadFile(files::PathOf(path));
    if (!content.Problem.empty()) throw UsageError("\"" + path + "\" cannot be read: " + content.Problem);
    const auto scratch = std::make_unique<m8085::MemoryBytes>();
    std::istringstream file(content.Bytes);
    if (!memedata::LoadDataFile(file, *scratch))
        throw UsageError("\"" + path +
                         "\" is no data file: it has a byte for an address beyond FFFF, or too large a number");
    return std::move(content.Bytes);
}

// Throws if the file could not be written, for the reason given.
void ExpectWritten(const std::string& path, const std::optional<std::string>& reason) {
    if (reason) throw UsageError("\"" + path + "\" could not be written: " + *reason);
}

std::string Now(const char* format) {
    const std::time_t now = std::time(nullptr);
    std::array<char, 40> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), format, std::localtime(&now));
    return {text.data(), length};
}

std::string Compose(const MemoryFile& file, const Simulation& simulation) {
    const m8085::MemoryBytes& memory = simulation.Machine.Memory;
    std::vector<memedata::AddressRange> ranges = file.Ranges;
    const bool isEmpty = simulation.Translation.End == m8085::ProgramOrigin;
    if (ranges.empty() && !isEmpty) ranges.push_back(simulation.ProgramRange());
    if (file.As == MemoryFile::Format::DataFile)
        return memedata::ComposeDataFile(ranges, memory, Now("%Y-%m-%d"), Now("%H:%M:%S"));
    const memedata::AddressRange range = ranges.empty() ? memedata::AddressRange{1, 0} : ranges.front();
    return file.As == MemoryFile::Format::Binary ? ComposeBinary(range, memory) : ComposeIntelHex(range, memory);
}

// One call of the program.
class Session {
public:
    Session(Options options, std::istream& in, std::ostream& out, std::ostream& err)
        : options_(std::move(options)), in_(in), out_(out), err_(err) {
        for (const std::string& path : options_.DataFiles) dataFiles_.push_back(ReadDataFile(path));
    }

    int Run() {
        int exitCode = Success;
        for (const std::string& program : options_.Programs) {
            const std::unique_ptr<Simulation> simulation = Assemble(program);
            if (simulation->Translation.Succeeded) {
                const DeferredSignals deferred;
                Simulate(*simulation);
                DeferredSignals::Check();
            }
            Report(*simulation);
            exitCode = std::max<int>(exitCode, ExitCodeOf(*simulation, options_));
        }
        if (!out_.flush()) throw UsageError("standard output could not be written");
        return exitCode;
    }

private:
    bool IsMarkingSheet() const { return !options_.Expectations.empty(); }

    std::unique_ptr<Simulation> Assemble(const std::string& program) {
        const bool isStandardInput = program == "-";
        const files::Content file = isStandardInput
                                        ? files::ReadStream(in_, editor::LargestProgramFile)
                                        : files::ReadFile(files::PathOf(program), editor::LargestProgramFile);
        const std::string name = isStandardInput ? "<stdin>" : program;
        const bool hasHeading = options_.Programs.size() > 1 && !options_.Json && !IsMarkingSheet();
        if (hasHeading) out_ << Printable(name) << ":\n";
        return file.Problem.empty() ? console::Assemble(name, file.Bytes) : Unreadable(name, file.Problem);
    }

    void Simulate(Simulation& simulation) {
        if (options_.Listing) Put(*options_.Listing, ComposeListing(simulation));
        for (const std::string& dataFile : dataFiles_) {
            std::istringstream file(dataFile);
            memedata::LoadDataFile(file, simulation.Machine.Memory);
        }
        for (const Setting& setting : options_.Settings) setting.Store(simulation.Machine);
        simulation.Before = simulation.Machine;
        if (!options_.CheckOnly) RunProgram(simulation);
        for (const MemoryFile& file : options_.MemoryFiles)
            ExpectWritten(file.Path, files::WriteFile(files::PathOf(file.Path), Compose(file, simulation)));
    }

    void RunProgram(Simulation& simulation) {
        if (!options_.Trace) return console::Run(simulation, options_.Limit, {});
        if (options_.Trace->empty())
            return console::Run(simulation, options_.Limit, [this](std::string_view lines) {
                if (!(out_ << lines)) throw UsageError("standard output could not be written");
            });
        files::FileWriter file(files::PathOf(*options_.Trace));
        const auto commit = [&] { ExpectWritten(*options_.Trace, file.Commit()); };
        console::Run(simulation, options_.Limit, [&](std::string_view lines) {
            if (!file.Write(lines)) commit();
        });
        commit();
    }

    void Put(const std::string& path, const std::string& text) {
        if (path.empty())
            out_ << text;
        else
            ExpectWritten(path, files::WriteFile(files::PathOf(path), text));
    }

    void Report(const Simulation& simulation) {
        if (options_.Json) {
            out_ << JsonReport(simulation, options_);
            return;
        }
        if (!IsMarkingSheet()) {
            out_ << TextReport(simulation, options_);
            out_.flush();
            err_ << Diagnosis(simulation);
            return;
        }
        out_ << Verdict(simulation, options_);
        if (!options_.Views.empty()) out_ << TextReport(simulation, options_);
    }

    Options options_;
    std::istream& in_;
    std::ostream& out_;
    std::ostream& err_;
    std::vector<std::string> dataFiles_;  // their contents
};

}  // namespace

int Main(std::vector<std::string> arguments, std::istream& in, std::ostream& out, std::ostream& err) {
    try {
        CommandLine commandLine = ReadCommandLine(std::move(arguments));
        if (commandLine.Wanted) return Session(std::move(*commandLine.Wanted), in, out, err).Run();
        out << commandLine.Answer;
        return out.flush() ? Success : WrongUse;
    } catch (const Interruption&) {
        out.flush();
        return WrongUse;
    } catch (const std::exception& problem) {
        err << "velmora-run: " << Printable(problem.what()) << "\nvelmora-run --help tells how it is used.\n";
        return WrongUse;
    }
}

}  // namespace console
