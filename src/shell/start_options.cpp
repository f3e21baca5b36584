#include "shell/start_options.h"

#include <charconv>

namespace shell {

namespace {

constexpr double smallestScale = 1;
constexpr double largestScale = 4;

constexpr const char* help =
    "Usage: velmora [--scale FACTOR] [FILE]\n"
    "Opens a workbench for the Intel 8085, with the program of FILE.\n"
    "\n"
    "  --scale FACTOR  makes everything larger, such as 1.5 or 2; from 1 to 4\n"
    "  --help          prints this\n"
    "  --version       prints the version\n"
    "\n"
    "velmora-run is the same machine on the command line.\n";

bool IsScale(const std::string& text) {
    double factor = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), factor, std::chars_format::fixed);
    return error == std::errc() && end == text.data() + text.size() && factor >= smallestScale &&
           factor <= largestScale;
}

void TakeScale(StartOptions& options, const std::string& factor) {
    if (IsScale(factor))
        options.Scale = factor;
    else
        options.Problem = "--scale takes a factor from 1 to 4, such as 1.5, and not \"" + factor + "\"";
}

void TakeFile(StartOptions& options, const std::string& name) {
    if (options.File.empty())
        options.File = name;
    else
        options.Surplus = "one file can be opened at a time: \"" + name + "\" is one too many";
}

}  // namespace

StartOptions ReadStartOptions(const std::vector<std::string>& words) {
    const std::string scaleWith = "--scale=";
    StartOptions options;
    bool onlyFiles = false;
    for (std::size_t next = 0; next < words.size(); ++next) {
        const std::string& word = words[next];
        if (onlyFiles || word.size() < 2 || word[0] != '-')
            TakeFile(options, word);
        else if (word == "--")
            onlyFiles = true;
        else if (word == "--help")
            options.Answer = help;
        else if (word == "--version")
            options.Answer = "velmora " VELMORA_VERSION "\n";
        else if (word == "--scale")
            TakeScale(options, ++next < words.size() ? words[next] : "");
        else if (word.starts_with(scaleWith))
            TakeScale(options, word.substr(scaleWith.size()));
        else
            options.Surplus = "there is no option \"" + word + "\"; --help lists what there is";
    }
    return options;
}

}  // namespace shell
