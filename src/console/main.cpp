#include <csignal>
#include <iostream>

#include "console/console.h"

int main(int argc, char** argv) {
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow further is reported, not the end of the program
#endif
    std::ios::sync_with_stdio(false);
    return console::Main({argv + 1, argv + argc}, std::cin, std::cout, std::cerr);
}
