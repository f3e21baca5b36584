#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "check.h"
#include "console/console.h"

// Any options and any program: it ends with one of its codes, in bounded time and output, and says why where it fails.
//
// The lines up to an empty one are the arguments; what follows is the program, the data file and standard input. All
// files lie in a folder of the fuzzer's own, which no argument can lead out of.
namespace {

constexpr std::size_t mostArguments = 16;
constexpr std::size_t longestArgument = 100;

// An empty folder that is the current one for as long as this lives.
class Folder {
public:
    Folder() : before_(std::filesystem::current_path()) {
        std::string name = (std::filesystem::temp_directory_path() / "console_fuzzer-XXXXXX").string();
        CHECK(::mkdtemp(name.data()) != nullptr);
        std::filesystem::current_path(own_ = name);
    }
    ~Folder() {
        std::filesystem::current_path(before_);
        std::filesystem::remove_all(own_);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

private:
    std::filesystem::path before_;
    std::filesystem::path own_;
};

std::vector<std::string> TakeArguments(std::istream& input) {
    std::vector<std::string> arguments = {"--limit", "3000"};
    std::string line;
    while (std::getline(input, line) && !line.empty() && arguments.size() < mostArguments) {
        for (char& character : line)
            if (character == '/' || character == '\0') character = '_';
        if (!line.starts_with("--limit") && line.size() <= longestArgument) arguments.push_back(line);
    }
    return arguments;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Folder folder;
    std::istringstream input(std::string(reinterpret_cast<const char*>(data), size));
    const std::vector<std::string> arguments = TakeArguments(input);
    const std::string rest(std::istreambuf_iterator<char>(input), {});
    for (const char* name : {"p.asm", "q.asm", "d.dat"}) std::ofstream(name, std::ios::binary) << rest;

    std::istringstream in(rest);
    std::ostringstream out;
    std::ostringstream err;
    const int code = console::Main(arguments, in, out, err);
    CHECK(code >= 0 && code <= 5);
    CHECK(!out.str().empty() || !err.str().empty());
    constexpr std::size_t mostOutput = std::size_t{100} << 20;
    CHECK(out.str().size() + err.str().size() < mostOutput);
    return 0;
}
