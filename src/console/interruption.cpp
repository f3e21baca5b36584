#include "console/interruption.h"

namespace console {

namespace {

constexpr int deferred[] = {
    SIGINT, SIGTERM,
#ifdef SIGHUP
    SIGHUP,  // the terminal is closed
#endif
};

volatile std::sig_atomic_t arrived = 0;

void Note(int signal) {
    arrived = signal;
}

}  // namespace

DeferredSignals::DeferredSignals() {
    for (const int signal : deferred) {
        before_.push_back(std::signal(signal, Note));
        if (before_.back() == SIG_IGN) std::signal(signal, SIG_IGN);
    }
}

DeferredSignals::~DeferredSignals() {
    auto before = before_.begin();
    for (const int signal : deferred) std::signal(signal, *before++);
}

void DeferredSignals::Check() {
    if (arrived != 0) throw Interruption();
}

int DeferredSignals::Arrived() {
    return arrived;
}

}  // namespace console
