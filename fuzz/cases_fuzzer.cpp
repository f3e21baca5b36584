#include <memory>
#include <string>

#include "cases/case.h"
#include "check.h"

// Any text as the cases of a program: every claim that was read keeps its line, and holds once it has been stored, and
// nothing is both read and at fault.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string source(reinterpret_cast<const char*>(data), size);
    const cases::Cases read = cases::ReadCases(source);
    const auto machine = std::make_unique<m8085::MachineState>();
    int latest = 0;
    for (const cases::Case& each : read.All) {
        CHECK(!each.Name.empty() && each.Line >= latest);
        latest = each.Line;
        for (const auto& claims : {each.Given, each.Gives}) {
            for (const auto& [line, claim] : claims) {
                CHECK(line >= each.Line);
                if (claim.IsOfTStates()) continue;
                claim.Store(*machine);
                CHECK(claim.Holds(*machine));
            }
        }
        for (const cases::Failure& failure : cases::Judge(each, *machine)) CHECK(!failure.Found.empty());
        if (each.Gives.empty()) CHECK(!read.Faults.empty());
    }
    for (const cases::Fault& fault : read.Faults) CHECK(fault.Line > 0 && !fault.Text.empty());
    return 0;
}
