#include "console/console.h"

#include <algorithm>
#include <sstream>

#include "console/interruption.h"
#include "console/listing.h"
#include "console/options.h"
#include "console/outputs.h"
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
                         "\" is not a data file: it has a byte for an address beyond FFFF, or too large a number");
    return std::move(content.Bytes);
}

// Throws if the file could not be written, for the reason given.
void ExpectWritten(const std::string& path, const std::optional<std::string>& reason) {
    if (reason) throw UsageError("\"" + path + "\" could not be written: " + *reason);
}

void ExpectPrinted(std::ostream& out) {
    if (!out) throw UsageError("standard output could not be written");
}

// One call of the program.
class Session {
public:
    Session(Options options, std::istream& in, std::ostream& out, std::ostream& err)
        : options_(std::move(options)),
          in_(in),
          out_(out),
          err_(err),
          report_(options_.PrintsListingOrTrace() ? err : out) {
        for (const std::string& path : options_.DataFiles) dataFiles_.push_back(ReadDataFile(path));
    }

    int Run() {
        int exitCode = Success;
        for (const std::string& program : options_.Programs) {
            const std::unique_ptr<Simulation> simulation = Assemble(program);
            if (simulation->Assembly.Succeeded) {
                const DeferredSignals deferred;
                Simulate(*simulation);
                DeferredSignals::Check();
            }
            ExpectPrinted(out_.flush());
            Report(*simulation);
            ExpectPrinted(out_.flush());
            exitCode = std::max<int>(exitCode, ExitCodeOf(*simulation, options_));
        }
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
        if (options_.Programs.size() > 1 && !options_.Json) PrintHeading(Printable(name) + ":\n");
        return file.Problem.empty() ? console::Assemble(name, file.Bytes) : Unreadable(name, file.Problem);
    }

    // Each of two streams has to be complete by itself. The lines of a marking sheet begin with the name anyway.
    void PrintHeading(const std::string& heading) {
        if (&report_ != &out_ || !IsMarkingSheet()) out_ << heading;
        if (&report_ != &out_ && !IsMarkingSheet()) report_ << heading;
    }

    void Simulate(Simulation& simulation) {
        if (options_.Listing) Put(*options_.Listing, ComposeListing(simulation));
        for (const std::string& dataFile : dataFiles_) {
            std::istringstream file(dataFile);
            memedata::LoadDataFile(file, simulation.Machine.Memory);
        }
        for (const cases::Claim& setting : options_.Settings) setting.Store(simulation.Machine);
        simulation.Before = simulation.Machine;
        if (!options_.CheckOnly) RunProgram(simulation);
        for (const MemoryFile& file : options_.MemoryFiles)
            ExpectWritten(file.Path, files::WriteFile(files::PathOf(file.Path), Compose(file, simulation)));
    }

    void RunProgram(Simulation& simulation) {
        constexpr std::uint64_t usualLimit = 1'000'000'000;
        constexpr std::uint64_t usualTrace = 100'000;
        const std::uint64_t limit = options_.Limit.value_or(usualLimit);
        const std::uint64_t lines = options_.TraceLines.value_or(usualTrace);
        if (!options_.Trace) return console::Run(simulation, limit, {});
        if (options_.Trace->empty())
            return console::Run(simulation, limit,
                                {[this](std::string_view text) { ExpectPrinted(out_ << text); }, lines});
        files::FileWriter file(files::PathOf(*options_.Trace), files::Writing::InPlace);
        const auto commit = [&] { ExpectWritten(*options_.Trace, file.Commit()); };
        const auto write = [&](std::string_view text) {
            if (!file.Write(text)) commit();
        };
        console::Run(simulation, limit, {write, lines});
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
            report_ << JsonReport(simulation, options_);
        } else if (IsMarkingSheet()) {
            report_ << Verdict(simulation, options_);
            if (!options_.Views.empty()) report_ << TextReport(simulation, options_);
        } else {
            report_ << TextReport(simulation, options_);
            report_.flush();
            err_ << Diagnosis(simulation);
        }
    }

    Options options_;
    std::istream& in_;
    std::ostream& out_;
    std::ostream& err_;
    std::ostream& report_;                // one of the two
    std::vector<std::string> dataFiles_;  // their contents
};

}  // namespace

int Main(std::vector<std::string> arguments, std::istream& in, std::ostream& out, std::ostream& err) {
    try {
        CommandLine commandLine = ReadCommandLine(std::move(arguments));
        if (!commandLine.Wanted) {
            ExpectPrinted((out << commandLine.Answer).flush());
            return Success;
        }
        CheckOutputs(*commandLine.Wanted);
        return Session(std::move(*commandLine.Wanted), in, out, err).Run();
    } catch (const Interruption&) {
        out.flush();
        return WrongUse;
    } catch (const std::exception& problem) {
        err << "velmora-run: " << Printable(problem.what()) << "\nvelmora-run --help says how it is used.\n";
        return WrongUse;
    }
}

}  // namespace console
