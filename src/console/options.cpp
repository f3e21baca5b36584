#include "console/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iterator>

#include "console/text.h"

namespace console {

namespace {

using Words = std::vector<std::string>;

View ReadView(const std::string& text) {
    if (text == "registers") return {View::Kind::Registers, {}};
    if (text == "ports") return {View::Kind::Ports, {}};
    if (text == "changed") return {View::Kind::Changed, {}};
    if (LooksLikeRange(text)) return {View::Kind::Memory, ReadRange(text)};
    if (const auto address = memedata::ReadAddress(std::u16string(text.begin(), text.end())))
        return {View::Kind::Memory, {*address, *address}};
    throw UsageError("--show takes registers, ports, changed, an address or a range such as 9000-90FF, not \"" + text +
                     "\"");
}

// What follows FILE as long as it is a range; the rest are programs, which may stand anywhere.
MemoryFile TakeMemoryFile(MemoryFile::Format format, const Words& words, Words& programs) {
    MemoryFile file{format, words.front(), {}};
    const auto isRange = [](const std::string& word) { return LooksLikeRange(word); };
    const auto endOfRanges = std::find_if_not(words.begin() + 1, words.end(), isRange);
    std::transform(words.begin() + 1, endOfRanges, std::back_inserter(file.Ranges), ReadRange);
    programs.insert(programs.end(), endOfRanges, words.end());
    if (format != MemoryFile::Format::DataFile && file.Ranges.size() > 1)
        throw UsageError("only --save takes more than one range");
    return file;
}

// In upper case, since some file systems make no difference.
std::string Extension(const std::string& path) {
    return UpperCase(std::filesystem::path(path).extension().string());
}

bool IsSameFile(const std::string& one, const std::string& other) {
    std::error_code error;
    const auto whole = [&error](const std::string& path) {
        return std::filesystem::absolute(path, error).lexically_normal();
    };
    return std::filesystem::equivalent(one, other, error) || whole(one) == whole(other);
}

// A file that is written must not be one of the programs, and its name not look like theirs: with --listing *.asm the
// first of them would be gone. A device loses nothing.
void KeepFromPrograms(const std::string& path, const Words& programs) {
    std::error_code error;
    if (std::filesystem::is_other(path, error)) return;
    for (const std::string& program : programs)
        if (program != "-" && (Extension(path) == Extension(program) || IsSameFile(path, program)))
            throw UsageError("\"" + path + "\" is named like a program, and would be written over");
}

void CheckTogether(const Options& options, bool isLimited) {
    if (options.CheckOnly && (isLimited || options.Trace || !options.Views.empty() || !options.Expectations.empty()))
        throw UsageError("--check does not run the program: it goes without --limit, --trace, --show and --expect");
    Words paths;
    for (const auto& path : {options.Listing, options.Trace})
        if (path && !path->empty()) paths.push_back(*path);
    for (const MemoryFile& file : options.MemoryFiles) paths.push_back(file.Path);
    if (std::ranges::find(paths, "-") != paths.end()) throw UsageError("\"-\" is no file that can be written");
    for (auto path = paths.begin(); path != paths.end(); ++path) {
        KeepFromPrograms(*path, options.Programs);
        if (std::any_of(paths.begin(), path, [&](const std::string& other) { return IsSameFile(*path, other); }))
            throw UsageError("\"" + *path + "\" is to be written twice");
    }
    if (!paths.empty() && options.Programs.size() > 1)
        throw UsageError("only one program can be given where a file is to be written");
    if (options.Json && (options.Listing == "" || options.Trace == ""))
        throw UsageError("with --json a listing and a trace need a FILE");
}

// --listing and --trace take a FILE only where another PROGRAM is there. Of two words neither is surely the PROGRAM.
void SettleOptionalFiles(Options& options) {
    if (!options.Programs.empty()) return;
    for (auto* const path : {&options.Listing, &options.Trace})
        if (!path->value_or("").empty()) options.Programs.push_back(std::exchange(**path, {}));
    if (options.Programs.size() != 1) throw UsageError("no PROGRAM is given");
}

}  // namespace

CommandLine ReadCommandLine(std::vector<std::string> arguments) {
    CLI::App app("", "velmora-run");
    Options options;
    std::optional<std::string> limit;
    Words settings;
    Words views;
    Words expectations;
    const auto each = [&app](const char* name, Words& words, const char* label, const char* description) {
        app.add_option(name, words, description)->option_text(label)->allow_extra_args(false);
    };
    const auto optionalFile = [&app](const char* name, std::optional<std::string>& path, const char* description) {
        app.add_option(name, path, description)->option_text("[FILE]")->expected(0, 1);
    };
    const auto memoryFile = [&](const char* name, const char* label, const char* description,
                                MemoryFile::Format format) {
        const auto take = [&options, format](const Words& words) {
            options.MemoryFiles.push_back(TakeMemoryFile(format, words, options.Programs));
        };
        app.add_option_function<Words>(name, take, description)
            ->option_text(label)
            ->expected(1, -1)
            ->trigger_on_parse();
    };

    app.formatter(std::make_shared<CLI::Formatter>());
    app.get_formatter()->column_width(26);
    app.set_version_flag("--version", "velmora-run " VELMORA_VERSION, "Print the version and exit");
    Words programs;
    app.add_option("PROGRAM", programs, "A program file, or - for standard input")->option_text("...");
    app.add_flag("--check", options.CheckOnly, "Assemble only");
    optionalFile("--listing", options.Listing, "Address, bytes, source of each line, and labels");
    each("--load", options.DataFiles, "FILE", "Load a data file before the run");
    each("--set", settings, "WHERE=VALUE", "Set A, Z, HL, 9000=05,06 or \"port 10=0F\" before it");
    app.add_option("--limit", limit, "End after N instructions (10^9), 0 for never")->option_text("N");
    optionalFile("--trace", options.Trace, "One line for each instruction executed");
    each("--show", views, "WHAT", "registers, ports, changed, or a RANGE of memory");
    each("--expect", expectations, "WHERE=VALUE", "Pass or fail, as with --set; also tstates<=N");
    app.add_flag("--json", options.Json, "Print one JSON object for each program");
    memoryFile("--save", "FILE RANGE...", "Write memory after the run to a data file", MemoryFile::Format::DataFile);
    memoryFile("--binary", "FILE RANGE", "The same as raw bytes; no RANGE: the program", MemoryFile::Format::Binary);
    memoryFile("--hex", "FILE RANGE", "The same as Intel HEX; a RANGE is 9000-90FF", MemoryFile::Format::IntelHex);
    app.footer(
        "Exit codes: 0 ended, 1 not assembled, 2 wrong use, 3 without end, 4 not as\n"
        "expected, 5 access refused. The manual page velmora-run(1) tells the rest.");

    try {
        std::ranges::reverse(arguments);  // as the parser wants them
        app.parse(arguments);
    } catch (const CLI::CallForHelp&) {
        return {std::nullopt, app.help()};
    } catch (const CLI::CallForVersion& version) {
        return {std::nullopt, std::string(version.what()) + "\n"};
    } catch (const CLI::ParseError& error) {
        throw UsageError(error.what());
    }

    options.Programs.insert(options.Programs.end(), programs.begin(), programs.end());
    if (limit) options.Limit = ReadDecimal(*limit, "--limit");
    SettleOptionalFiles(options);
    for (const std::string& text : settings) options.Settings.emplace_back(text);
    for (const std::string& text : expectations) options.Expectations.emplace_back(text);
    std::ranges::transform(views, std::back_inserter(options.Views), ReadView);
    CheckTogether(options, limit.has_value());
    return {std::move(options), {}};
}

}  // namespace console
