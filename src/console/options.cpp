#include "console/options.h"

#include <algorithm>
#include <functional>
#include <set>

#include "files/path.h"
#include "machine/number_format.h"
#include "machine/text.h"

namespace console {

namespace {

using Words = std::vector<std::string>;

View ReadView(const std::string& text) {
    const std::string upper = m8085::UpperCase(text);
    if (upper == "REGISTERS") return {View::Kind::Registers, {}};
    if (upper == "PORTS") return {View::Kind::Place, {cases::Place::Kind::Port, 0, m8085::PortCount - 1}};
    if (upper == "CHANGED") return {View::Kind::Changed, {}};
    if (upper == "TRAFFIC") return {View::Kind::Traffic, {}};
    try {
        return {View::Kind::Place, cases::ReadPlace(text)};
    } catch (const cases::Misread& problem) {
        throw UsageError(problem.what() + std::string("; --show also takes registers, ports, changed and traffic"));
    }
}

std::uint64_t ReadCount(const std::string& text, const char* option) {
    if (const auto count = m8085::ReadDecimal(text)) return *count;
    throw UsageError(std::string(option) + " takes a decimal number, not \"" + text + "\"");
}

std::int32_t ReadOrigin(const std::string& text) {
    constexpr int last = m8085::MemorySize - 1;
    const auto address = cases::ReadNumber(text, last);
    if (address && *address <= last) return *address;
    throw UsageError("--origin takes an address, from 0 to FFFF, not \"" + text + "\"");
}

memedata::AddressRange ReadRange(const std::string& text) {
    const cases::Place place = cases::ReadPlace(text);
    return {static_cast<std::uint16_t>(place.First), static_cast<std::uint16_t>(place.Last)};
}

void AddClaims(std::vector<cases::Claim>& list, const std::string& text) {
    const cases::Claims claims = cases::ReadClaims(text);
    if (!claims.Files.empty()) throw UsageError("\"" + claims.Files[0] + "\" is not WHERE=VALUE; --load loads files");
    list.insert(list.end(), claims.All.begin(), claims.All.end());
}

// Reads the words one after the other. A word that is not an option, and that no option before it takes, is a program.
class Reader {
public:
    explicit Reader(Words words) : words_(std::move(words)) {}

    CommandLine Read() {
        while (next_ < words_.size() && answer_.empty()) {
            const std::string word = words_[next_++];
            if (word == "--" && !onlyPrograms_)
                onlyPrograms_ = true;
            else if (!onlyPrograms_ && word.size() > 1 && word.front() == '-')
                TakeOption(word);
            else
                options_.Programs.push_back(word);
        }
        if (!answer_.empty()) return {std::nullopt, answer_};
        CheckPrinting("--convert", {"--data", "--decimal"});
        CheckPrinting("--disassemble", {"--origin"});
        return {std::move(options_), {}};
    }

private:
    // An option that only prints a program goes with few others.
    void CheckPrinting(const std::string& option, std::initializer_list<std::string_view> others) const {
        if (!taken_.contains(option)) return;
        for (const std::string& name : taken_)
            if (name != option && !m8085::Contains(others, name))
                throw UsageError(option + " only prints a program, and goes without " + name);
        if (options_.Programs.size() > 1) throw UsageError(option + " takes one file");
    }

    // What follows an option: a word, nothing, or "=" and a word if the user wants.
    enum class Takes { Nothing, Word, WordOrNothing };

    struct Row {
        std::string Name;
        Takes What;
        const char* Label;  // what the word is
        const char* Description;
        std::function<void(const std::string& word)> Take;
        bool CanRepeat = false;
    };

    void TakeOption(const std::string& word) {
        const std::size_t sign = std::min(word.find('='), word.size());
        const std::string name = word == "-h" ? "--help" : word.substr(0, sign);
        const auto row = std::ranges::find(rows_, name, &Row::Name);
        if (row == rows_.end()) throw UsageError("there is no option " + name);
        const bool isNew = taken_.insert(name).second;
        if (!row->CanRepeat && !isNew) throw UsageError(name + " is given twice");
        if (sign < word.size()) {
            if (row->What == Takes::Nothing) throw UsageError(name + " takes nothing after it");
            return row->Take(word.substr(sign + 1));
        }
        if (row->What != Takes::Word) return row->Take({});
        if (next_ == words_.size() || words_[next_].starts_with("--"))
            throw UsageError(name + " needs its " + row->Label + " after it");
        row->Take(words_[next_++]);
    }

    // The ranges that follow FILE belong to it. What follows them must be a program that is there: it may be a range
    // that is not well written.
    void TakeMemoryFile(MemoryFile::Format format, const std::string& path) {
        MemoryFile file{format, path, {}};
        for (; next_ < words_.size() && cases::LooksLikeRange(words_[next_]); ++next_)
            file.Ranges.push_back(ReadRange(words_[next_]));
        if (format != MemoryFile::Format::DataFile && file.Ranges.size() > 1)
            throw UsageError("only --save takes more than one range");
        options_.MemoryFiles.push_back(std::move(file));
        if (next_ == words_.size() || words_[next_].starts_with('-')) return;
        std::error_code error;
        const std::string& word = words_[next_];
        if (exists(files::PathOf(word), error)) return;
        const auto range = cases::RangeMeantBy(word);
        throw UsageError(word + " is not a range" + (range ? ": " + *range : " such as 8000-8003, nor a file"));
    }

    std::string Help() const;

    Words words_;
    std::size_t next_ = 0;
    bool onlyPrograms_ = false;
    std::set<std::string> taken_;
    Options options_;
    std::string answer_;

    const std::vector<Row> rows_ = {
        {"--help", Takes::Nothing, "", "Print this help", [this](auto&) { answer_ = Help(); }},
        {"--version", Takes::Nothing, "", "Print the version",
         [this](auto&) { answer_ = "velmora-run " VELMORA_VERSION "\n"; }},
        {"--check", Takes::Nothing, "", "Assemble only", [this](auto&) { options_.CheckOnly = true; }},
        {"--listing", Takes::WordOrNothing, "FILE", "Address, bytes, source of each line, and labels",
         [this](auto& path) { options_.Listing = path; }},
        {"--load", Takes::Word, "FILE", "Load a data file before the run",
         [this](auto& path) { options_.DataFiles.push_back(path); }, true},
        {"--set", Takes::Word, "WHERE=VALUE", "Set A, Z, HL, 9000=05,06 or \"port 10=0F\" before it",
         [this](auto& word) { AddClaims(options_.Settings, word); }, true},
        {"--feed", Takes::Word, "PORT=VALUES", "Let \"port 0=01,01,00\" be read one by one",
         [this](auto& word) { options_.Feeds.push_back(cases::ReadFeed(word)); }, true},
        {"--origin", Takes::Word, "ADDRESS", "Assemble for there instead of 8000",
         [this](auto& word) { options_.Origin = ReadOrigin(word); }},
        {"--limit", Takes::Word, "N", "End after N instructions (10^9), 0 for never",
         [this](auto& word) { options_.Limit = ReadCount(word, "--limit"); }},
        {"--trace", Takes::WordOrNothing, "FILE", "One line for each instruction executed",
         [this](auto& path) { options_.Trace = path; }},
        {"--trace-lines", Takes::Word, "N", "So many of them (100000), 0 for all",
         [this](auto& word) { options_.TraceLines = ReadCount(word, "--trace-lines"); }},
        {"--profile", Takes::Nothing, "", "Times and T-states of each line",
         [this](auto&) { options_.Profile = true; }},
        {"--show", Takes::Word, "WHAT", "registers, ports, changed, traffic, A, 9000-90FF",
         [this](auto& word) { options_.Views.push_back(ReadView(word)); }, true},
        {"--expect", Takes::Word, "WHERE=VALUE", "Pass or fail, as with --set; also tstates<=N",
         [this](auto& word) { AddClaims(options_.Expectations, word); }, true},
        {"--test", Takes::Nothing, "", "Run the cases that the program's comments say",
         [this](auto&) { options_.Test = true; }},
        {"--cases", Takes::Word, "FILE", "Run the cases of this file in all programs",
         [this](auto& path) { options_.Cases = path; }},
        {"--junit", Takes::Word, "FILE", "Write what came of them for a build server",
         [this](auto& path) { options_.JUnit = path; }},
        {"--convert", Takes::Nothing, "", "Print a program from elsewhere in this language",
         [this](auto&) { options_.Convert = true; }},
        {"--data", Takes::Word, "FILE", "Write its data to a data file", [this](auto& path) { options_.Data = path; }},
        {"--decimal", Takes::Nothing, "", "Take its numbers for decimal", [this](auto&) { options_.Decimal = true; }},
        {"--disassemble", Takes::Nothing, "", "Print the bytes of a HEX or data file as a program",
         [this](auto&) { options_.Disassemble = true; }},
        {"--json", Takes::Nothing, "", "Print one JSON object for each program",
         [this](auto&) { options_.Json = true; }},
        {"--save", Takes::Word, "FILE [RANGE...]", "Write memory after the run to a data file",
         [this](auto& path) { TakeMemoryFile(MemoryFile::Format::DataFile, path); }, true},
        {"--binary", Takes::Word, "FILE [RANGE]", "The same as raw bytes; no RANGE: the program",
         [this](auto& path) { TakeMemoryFile(MemoryFile::Format::Binary, path); }, true},
        {"--hex", Takes::Word, "FILE [RANGE]", "The same as Intel HEX; a RANGE is 9000-90FF",
         [this](auto& path) { TakeMemoryFile(MemoryFile::Format::IntelHex, path); }, true},
    };
};

std::string Reader::Help() const {
    constexpr std::size_t descriptionColumn = 27;
    std::string text = "Usage: velmora-run [OPTION...] PROGRAM...\n\nA PROGRAM is a file, or - for standard input.\n\n";
    for (const Row& row : rows_) {
        std::string line = "  " + row.Name;
        if (row.What == Takes::Word) line += std::string(" ") + row.Label;
        if (row.What == Takes::WordOrNothing) line += std::string("[=") + row.Label + ']';
        line.resize(descriptionColumn, ' ');
        text += line + row.Description + '\n';
    }
    return text +
           "\nExit codes: 0 ended, 1 not assembled, 2 wrong use, 3 without end, 4 not as\n"
           "expected, 5 access refused. The manual page velmora-run(1) says the rest.\n";
}

void CheckTogether(const Options& options) {
    if (options.Programs.empty()) throw UsageError("no PROGRAM is given");
    const bool needsOneRun =
        options.Trace || options.Profile || !options.Views.empty() || !options.Expectations.empty();
    if (options.CheckOnly && (needsOneRun || options.Limit || !options.Feeds.empty()))
        throw UsageError("--check does not run the program, and goes without what is about a run");
    if (options.TraceLines && !options.Trace && !options.ShowsTraffic())
        throw UsageError("--trace-lines goes with --trace or --show traffic");
    for (const cases::Feed& feed : options.Feeds)
        if (std::ranges::count(options.Feeds, feed.Port, &cases::Feed::Port) > 1)
            throw UsageError("one --feed says all that is read from a port");
    if (options.Json && options.PrintsListingOrTrace())
        throw UsageError("with --json a listing and a trace need a file: --listing=FILE, --trace=FILE");
    if (options.Test && options.Cases)
        throw UsageError("--test takes each program's own cases: it goes without --cases");
    if (options.JUnit && !options.RunsCases()) throw UsageError("--junit goes with --test or --cases");
    if (options.RunsCases() && (needsOneRun || options.CheckOnly || options.Listing || !options.MemoryFiles.empty()))
        throw UsageError("--test and --cases run a program more than once, and go without what is about one run");
    if ((options.Data || options.Decimal) && !options.Convert)
        throw UsageError("--data and --decimal go with --convert");
    const std::vector<std::string> inputs = options.Inputs();
    if (std::ranges::count(inputs, "-") > 1) throw UsageError("standard input can be read only once");
    if (std::ranges::any_of(options.Settings, &cases::Claim::IsOfTStates))
        throw UsageError("--set does not set T-states: they begin at 0");
}

}  // namespace

bool Options::ShowsTraffic() const {
    return std::ranges::count(Views, View::Kind::Traffic, &View::What) > 0;
}

std::vector<std::string> Options::Inputs() const {
    std::vector<std::string> inputs = Programs;
    inputs.insert(inputs.end(), DataFiles.begin(), DataFiles.end());
    if (Cases) inputs.push_back(*Cases);
    return inputs;
}

CommandLine ReadCommandLine(std::vector<std::string> arguments) {
    CommandLine commandLine = Reader(std::move(arguments)).Read();
    if (commandLine.Wanted) CheckTogether(*commandLine.Wanted);
    return commandLine;
}

}  // namespace console
