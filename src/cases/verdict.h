#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "machine/machine_state.h"

namespace cases {

// What is to be said beside a line that says what a program is given or gives.
struct Verdict {
    enum class Kind {  // from good to bad
        Held,          // all that the line says
        NotGiven,      // what it says the program is given was not there
        Failed         // what it says the program gives is not there; or it cannot be read
    };

    int Line = 0;  // counted from 1
    Kind What = Kind::Held;
    std::string Text;
};

// Loads a data file, by its name in the program's folder, into memory; false where it cannot be read.
using LoadDataFile = std::function<bool(const std::string& name, m8085::MemoryBytes& memory)>;

// The verdicts on the cases that the program says, one for a line and in the order of the lines, of a run from its
// beginning to its end: with the machine as it was before the first instruction and after the last one. A case is
// judged if what it is given was there; of any other one only that is said. The text is UTF-8.
std::vector<Verdict> VerdictsOf(std::string_view program, const m8085::MachineState& before,
                                const m8085::MachineState& after, const LoadDataFile& load);

}  // namespace cases
