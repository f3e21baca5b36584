#pragma once

#include <cstddef>
#include <deque>
#include <memory>

#include "machine/changes.h"

namespace execution {

// What the window shows of the latest step or run beside the machine itself.
struct Shown {
    // What is marked as changed: what has been made, up to these registers. Nothing without a difference.
    std::shared_ptr<const m8085::Difference> Made;
    m8085::Registers After;

    int Line = 0;  // selected, counted from 1; 0 for none
};

// A step or a whole run, with what leads back to the moment before it.
struct Done {
    std::shared_ptr<const m8085::Difference> Made;
    Shown Before;
    bool IsRun = false;
};

// The latest steps and runs, so that they can be taken back from the last one on. They take less than 7 MB: some 200
// bytes for a step, and four for each byte of memory or port that a run has changed.
class History {
public:
    // Of both together; and of runs alone. The oldest is forgotten with all before it.
    static constexpr std::size_t Most = 10'000;
    static constexpr std::size_t MostRuns = 16;

    void Add(Done done);
    bool IsEmpty() const { return done_.empty(); }
    Done TakeLast();  // there must be one
    void Clear();

private:
    std::deque<Done> done_;
    std::size_t runs_ = 0;
};

}  // namespace execution
