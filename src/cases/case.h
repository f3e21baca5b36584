#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cases/claim.h"
#include "machine/machine_state.h"

namespace cases {

// A claim and the line that makes it.
struct ClaimOfLine {
    int Line = 0;  // counted from 1
    Claim What;
};

// What a program is given, and what it leaves then.
struct Case {
    std::string Name;                    // in UTF-8; "case 2" for the second one if it has none of its own
    int Line = 0;                        // where it begins, counted from 1
    std::vector<std::string> DataFiles;  // to be loaded first, by their names in the program's folder
    std::vector<ClaimOfLine> Given;      // to be stored after that
    std::vector<ClaimOfLine> Gives;      // never empty
};

// A line that should belong to a case, and cannot be read.
struct Fault {
    int Line = 0;
    std::string Text;  // a sentence without capital and full stop
};

struct Cases {
    std::vector<Case> All;
    std::vector<Fault> Faults;
};

// Reads the cases of a program, or of a text of such lines without ";": "; given [five numbers] list.dat, A=05" and
// "; gives 9100=2A, T-states <= 300". Each "given" begins a case, and "gives" before the first one belongs to a case
// that is given nothing. Such a line is prose, and passed over, if it has neither "=" nor T-states, no name in
// brackets, and does not name files alone. The text is UTF-8; CR LF, LF and CR end a line.
Cases ReadCases(std::string_view source);

// A claim that does not hold, and what is there instead.
struct Failure {
    ClaimOfLine Expected;
    std::string Found;
};

// The claims of the case that do not hold in the machine that the program has left.
std::vector<Failure> Judge(const Case& which, const m8085::MachineState& after);

}  // namespace cases
