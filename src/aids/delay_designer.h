#pragma once

#include "aids/delay_loop.h"
#include "platform/program_text.h"

namespace aids {

// Asks for a time and inserts a delay loop of that length at the caret.
class DelayDesigner {
public:
    explicit DelayDesigner(platform::ProgramText& txtCode) : txtCode_(txtCode) {}

    void cmdDelay_Click();

private:
    platform::ProgramText& txtCode_;
    DelayLoops loops_;
};

}  // namespace aids
