#include "console/console.h"

#include <algorithm>

#include "console/converting.h"
#include "console/disassembling.h"
#include "console/inputs.h"
#include "console/interruption.h"
#include "console/listing.h"
#include "console/mark_report.h"
#include "console/marking.h"
#include "console/options.h"
#include "console/outputs.h"
#include "console/report.h"
#include "console/simulation.h"
#include "console/text.h"
#include "editor/program_file.h"
#include "files/file_writer.h"
#include "files/path.h"

namespace console {

namespace {

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
    Session(const Options& options, std::istream& in, std::ostream& out, std::ostream& err)
        : options_(options),
          inputs_(options, in),
          out_(out),
          err_(err),
          report_(options_.PrintsListingOrTrace() ? err : out) {}

    int Run() {
        int exitCode = Success;
        for (const std::string& program : options_.Programs) {
            if (options_.Programs.size() > 1 && !options_.Json) PrintHeading(Printable(ShownName(program)) + ":\n");
            const std::unique_ptr<Simulation> simulation = inputs_.Assemble(program);
            LookAtLines(*simulation);
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

    // Each of two streams has to be complete by itself. The lines of a marking sheet begin with the name anyway.
    void PrintHeading(const std::string& heading) {
        if (&report_ != &out_ || !IsMarkingSheet()) out_ << heading;
        if (&report_ != &out_ && !IsMarkingSheet()) report_ << heading;
    }

    // Warnings come before the run, which may take its time. A sheet has no place for them.
    void LookAtLines(Simulation& simulation) {
        const bool isAssembled = simulation.HowItEnded == Outcome::Assembled;
        if (!(isAssembled || options_.CheckOnly) || (IsMarkingSheet() && !options_.Json)) return;
        FindRemarks(simulation);
        if (options_.Json) return;
        ExpectPrinted(out_.flush());
        err_ << Remarks(simulation) << std::flush;
    }

    void Simulate(Simulation& simulation) {
        if (options_.Listing) Put(*options_.Listing, ComposeListing(simulation));
        inputs_.Prepare(simulation.Machine);
        simulation.Before = simulation.Machine;
        if (!options_.CheckOnly) RunProgram(simulation);
        for (const MemoryFile& file : options_.MemoryFiles)
            ExpectWritten(file.Path, files::WriteFile(files::PathOf(file.Path), Compose(file, simulation)));
    }

    void RunProgram(Simulation& simulation) {
        constexpr std::uint64_t usualLimit = 1'000'000'000;
        constexpr std::uint64_t usualLines = 100'000;
        RunSettings settings{.Limit = options_.Limit.value_or(usualLimit),
                             .Feeds = options_.Feeds,
                             .Profile = options_.Profile,
                             .Traffic = options_.ShowsTraffic(),
                             .MostLines = options_.TraceLines.value_or(usualLines)};
        if (options_.Trace && !options_.Trace->empty()) return RunIntoFile(simulation, settings);
        if (options_.Trace) settings.Trace = [this](std::string_view text) { ExpectPrinted(out_ << text); };
        console::Run(simulation, settings);
    }

    void RunIntoFile(Simulation& simulation, RunSettings settings) {
        files::FileWriter file(files::PathOf(*options_.Trace), files::Writing::InPlace);
        const auto commit = [&] { ExpectWritten(*options_.Trace, file.Commit()); };
        settings.Trace = [&](std::string_view text) {
            if (!file.Write(text)) commit();
        };
        console::Run(simulation, settings);
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
            if (!options_.Views.empty() || options_.Profile) report_ << TextReport(simulation, options_);
        } else {
            report_ << TextReport(simulation, options_);
            report_.flush();
            if (simulation.Remarks.empty() || simulation.HowItEnded != Outcome::NotAssembled)
                err_ << Diagnosis(simulation);
        }
    }

    const Options& options_;
    Inputs inputs_;
    std::ostream& out_;
    std::ostream& err_;
    std::ostream& report_;  // one of the two
};

// Runs the cases of the programs, and says what came of each.
class MarkingSession {
public:
    MarkingSession(const Options& options, std::istream& in, std::ostream& out)
        : options_(options), inputs_(options, in), out_(out) {}

    int Run() {
        if (options_.Cases) ReadSharedCases(*options_.Cases);
        std::vector<ProgramMark> marks;
        for (const std::string& program : options_.Programs) {
            marks.push_back(MarkProgram(program));
            out_ << (options_.Json ? MarkAsJson : options_.Cases ? SheetLine : TestLines)(marks.back());
            ExpectPrinted(out_.flush());
        }
        if (!options_.Json && (options_.Cases || marks.size() > 1)) out_ << Summary(marks, options_.Cases.has_value());
        ExpectPrinted(out_.flush());
        if (options_.JUnit) WriteJUnit(JUnitReport(marks));
        return std::ranges::max(marks, {}, &ProgramMark::Code).Code;
    }

private:
    void ReadSharedCases(const std::string& path) {
        const files::Content file = inputs_.Read(path, editor::LargestProgramFile);
        const editor::ProgramFile decoded = editor::DecodeProgramFile(file.Bytes);
        sharedCases_ = ReadCases(path, Utf8(decoded.Text));
        for (const std::string& problem : {file.Problem, decoded.Problem, sharedCases_.Problem})
            if (!problem.empty()) throw UsageError("\"" + path + "\": " + problem);
    }

    CaseFile OwnCases(const std::string& program, const Simulation& simulation) const {
        std::string source;
        for (const std::string& line : simulation.SourceLines) source += line + '\n';
        return ReadCases(program, source);
    }

    CaseFile ReadCases(const std::string& path, std::string_view text) const {
        CaseFile file = ReadCaseFile(path, text);
        for (const ReadyCase& each : file.All)
            for (const std::string& dataFile : each.What.DataFiles)
                if (options_.JUnit) KeepFromInput(*options_.JUnit, dataFile);
        return file;
    }

    ProgramMark MarkProgram(const std::string& program) const {
        constexpr std::uint64_t usualLimit = 10'000'000;
        const std::unique_ptr<Simulation> simulation = inputs_.Assemble(program);
        const CaseFile own = options_.Test ? OwnCases(program, *simulation) : CaseFile();
        const RunSettings settings{.Limit = options_.Limit.value_or(usualLimit), .Feeds = options_.Feeds};
        return Mark(*simulation, options_.Test ? own : sharedCases_, inputs_, settings);
    }

    void WriteJUnit(const std::string& report) const {
        const DeferredSignals deferred;
        ExpectWritten(*options_.JUnit, files::WriteFile(files::PathOf(*options_.JUnit), report));
    }

    const Options& options_;
    Inputs inputs_;
    std::ostream& out_;
    CaseFile sharedCases_;  // of --cases
};

}  // namespace

int Main(std::vector<std::string> arguments, std::istream& in, std::ostream& out, std::ostream& err) {
    try {
        CommandLine commandLine = ReadCommandLine(std::move(arguments));
        if (!commandLine.Wanted) {
            ExpectPrinted((out << commandLine.Answer).flush());
            return Success;
        }
        const Options& options = *commandLine.Wanted;
        CheckOutputs(options);
        if (options.Convert || options.Disassemble) {
            const Inputs inputs(options, in);
            const int exitCode = (options.Convert ? Convert : Disassemble)(options, inputs, out, err);
            ExpectPrinted(out.flush());
            return exitCode;
        }
        return options.RunsCases() ? MarkingSession(options, in, out).Run() : Session(options, in, out, err).Run();
    } catch (const Interruption&) {
        out.flush();
        return WrongUse;
    } catch (const std::exception& problem) {
        err << "velmora-run: " << Printable(problem.what()) << "\nvelmora-run --help says how it is used.\n";
        return WrongUse;
    }
}

}  // namespace console
