#include "console/outputs.h"

#include <algorithm>
#include <filesystem>

#include "assembler/instruction_table.h"
#include "assembler/line_words.h"
#include "editor/program_file.h"
#include "files/file_reader.h"
#include "files/file_writer.h"
#include "files/path.h"
#include "machine/number_format.h"
#include "machine/text.h"

namespace console {

namespace {

// In upper case, since some file systems make no difference.
std::string Extension(const std::string& path) {
    return m8085::UpperCase(files::TextOf(files::PathOf(path).extension()));
}

bool IsSameFile(const std::string& one, const std::string& other) {
    std::error_code error;
    const auto whole = [&error](const std::string& path) {
        return std::filesystem::absolute(files::PathOf(path), error).lexically_normal();
    };
    return std::filesystem::equivalent(files::PathOf(one), files::PathOf(other), error) || whole(one) == whole(other);
}

// A mnemonic or a label. An address with a colon, as data files have it, is neither.
bool BeginsLikeAProgram(std::u16string_view line) {
    const std::vector<std::u16string> words = assembler::WordsOfLine(line);
    if (words.empty()) return false;
    std::u16string_view word = words[0];
    if (assembler::IsMnemonic(word)) return true;
    const std::size_t colon = word.find(u':');
    if (colon == word.npos || colon == 0) return false;
    const std::u16string_view name = word.substr(0, colon);
    constexpr std::u16string_view punctuation = u"\"'.,/\\<>{}()[]=";
    return name.find_first_of(punctuation) == name.npos && !m8085::ReadHexNumber(name, m8085::MemorySize);
}

bool HoldsProgram(const std::string& path) {
    const files::Content file = files::ReadFile(files::PathOf(path), editor::LargestProgramFile);
    const std::u16string text = editor::DecodeProgramFile(file.Bytes).Text;
    return std::ranges::any_of(m8085::LinesOf(text), BeginsLikeAProgram);
}

// A device loses nothing.
void KeepWhatIsThere(const std::string& path, const Options& options) {
    std::error_code error;
    if (std::filesystem::is_other(files::PathOf(path), error)) return;
    const auto isNamedLike = [&path](const std::string& program) {
        return program != "-" && Extension(path) == Extension(program);
    };
    for (const std::string& input : options.Inputs()) KeepFromInput(path, input);
    if (std::ranges::any_of(options.Programs, isNamedLike))
        throw UsageError("\"" + path + "\" is named like a program, and would be written over");
    if (HoldsProgram(path)) throw UsageError("\"" + path + "\" holds a program, and would be written over");
}

}  // namespace

void KeepFromInput(const std::string& path, const std::string& input) {
    if (input == "-" ? files::IsStandardInput(files::PathOf(path)) : IsSameFile(path, input))
        throw UsageError("\"" + path + "\" is read, and would be written over");
}

void CheckOutputs(const Options& options) {
    std::vector<std::string> paths;
    for (const auto& path : {options.Listing, options.Trace, options.JUnit, options.Data})
        if (path && !path->empty()) paths.push_back(*path);
    for (const MemoryFile& file : options.MemoryFiles) paths.push_back(file.Path);
    for (auto path = paths.begin(); path != paths.end(); ++path) {
        if (*path == "-") throw UsageError("\"-\" is not a file that can be written");
        KeepWhatIsThere(*path, options);
        if (std::any_of(paths.begin(), path, [&](const std::string& other) { return IsSameFile(*path, other); }))
            throw UsageError("\"" + *path + "\" is to be written twice");
    }
    if (!paths.empty() && !options.JUnit && options.Programs.size() > 1)
        throw UsageError("only one program can be given where a file is to be written");
}

}  // namespace console
