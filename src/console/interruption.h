#pragma once

#include <csignal>
#include <vector>

namespace console {

// Thrown where the user has asked the program to end, so that no unfinished file is left behind.
struct Interruption {};

// As long as one lives, SIGINT and its like do not end the program at once. One that was ignored before still is.
class DeferredSignals {
public:
    DeferredSignals();
    ~DeferredSignals();
    DeferredSignals(const DeferredSignals&) = delete;
    DeferredSignals& operator=(const DeferredSignals&) = delete;

    // Throws an Interruption if a signal has come.
    static void Check();

    // The signal that has come, or 0.
    static int Arrived();

private:
    std::vector<void (*)(int)> before_;
};

}  // namespace console
