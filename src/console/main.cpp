#include <csignal>
#include <iostream>

#include "console/console.h"
#include "console/interruption.h"

int main(int argc, char** argv) {
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow further is reported, not the end of the program
#endif
    std::ios::sync_with_stdio(false);
    const int exitCode = console::Main({argv + 1, argv + argc}, std::cin, std::cout, std::cerr);
    // Whoever started the program sees what ended it, so that a loop over many programs ends too.
    if (const int signal = console::DeferredSignals::Arrived()) std::raise(signal);
    return exitCode;
}
