#include <csignal>
#include <iostream>

#include "console/console.h"
#include "console/interruption.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#endif

#ifdef _WIN32
// The shell there replaces no patterns such as *.asm by names: what starts the program does so where this is -1.
extern "C" int _dowildcard;
int _dowildcard = -1;
#endif

namespace {

int Run(std::vector<std::string> arguments) {
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow further is reported, not the end of the program
#endif
    std::ios::sync_with_stdio(false);
    return console::Main(std::move(arguments), std::cin, std::cout, std::cerr);
}

// Whoever started the program sees what ended it, so that a loop over many programs ends too.
int End(int exitCode) {
    const int signal = console::DeferredSignals::Arrived();
#ifdef _WIN32
    // The C library's own code would be 3, as for a run that comes to no end.
    if (signal != 0) return static_cast<int>(STATUS_CONTROL_C_EXIT);
#endif
    if (signal != 0) std::raise(signal);
    return exitCode;
}

#ifdef _WIN32

// UTF-8. Half of a pair of surrogates, which a name may hold, becomes the replacement character.
std::string Narrow(std::wstring_view wide) {
    const int length = static_cast<int>(wide.size());
    std::string narrow(wide.size() * 3, '\0');
    const int size = static_cast<int>(narrow.size());
    const int used = WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, narrow.data(), size, nullptr, nullptr);
    narrow.resize(static_cast<std::size_t>(used));
    return narrow;
}

// As long as it lives, the console shows UTF-8; then it has its own code page again.
class Utf8Console {
public:
    Utf8Console() { SetConsoleOutputCP(CP_UTF8); }
    ~Utf8Console() { SetConsoleOutputCP(before_); }
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;

private:
    UINT before_ = GetConsoleOutputCP();
};

}  // namespace

// What is read and written keeps its line ends.
int wmain(int argc, wchar_t** argv) {
    for (std::FILE* const stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
    std::vector<std::string> arguments;
    for (int index = 1; index < argc; ++index) arguments.push_back(Narrow(argv[index]));
    const auto run = [&arguments] {
        const Utf8Console console;
        return Run(std::move(arguments));
    };
    return End(run());
}

#else

}  // namespace

int main(int argc, char** argv) {
    return End(Run({argv + 1, argv + argc}));
}

#endif
