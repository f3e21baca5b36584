#include "execution/history.h"

#include <utility>

namespace execution {

void History::Add(Done done) {
    if (done.IsRun) ++runs_;
    done_.push_back(std::move(done));
    while (done_.size() > Most || runs_ > MostRuns) {
        if (done_.front().IsRun) --runs_;
        done_.pop_front();
    }
}

Done History::TakeLast() {
    Done last = std::move(done_.back());
    done_.pop_back();
    if (last.IsRun) --runs_;
    return last;
}

void History::Clear() {
    done_.clear();
    runs_ = 0;
}

}  // namespace execution
