#include <algorithm>
#include <string>

#include "assembler/assembler.h"
#include "assembler/explanation.h"
#include "assembler/source_preparation.h"
#include "check.h"

// Any text may be assembled, prepared or not. An assembly either succeeds or says why not and where; it writes only
// from its origin upward. All faults of a program are found, and none if it assembles.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static m8085::MachineState machine;
    static m8085::CodeMap codeMap;
    std::u16string text(data, data + size);
    const std::vector<std::size_t> splits = assembler::FindLabelSplits(text);
    for (auto place = splits.rbegin(); place != splits.rend(); ++place) text.insert(*place, u"\r\n");

    for (const std::u16string& source : {text, assembler::ConvertLineEnds(text)}) {
        machine.Halted = true;
        const assembler::Assembly assembly = assembler::AssembleProgram(source, machine, codeMap);
        CHECK(assembly.Succeeded != machine.Halted);
        CHECK(assembly.Succeeded == assembly.AsmErrorText.empty());
        CHECK(assembly.AsmErrorLine >= 0);
    }
    const assembler::PreparedProgram program = assembler::PrepareProgram(text);
    const assembler::Assembly assembly = assembler::AssembleProgram(program.Text, machine, codeMap);
    const std::vector<assembler::LineFault> faults = assembler::FindFaults(program);
    const auto isStop = [line = program.SourceLine(assembly.FaultLine)](const auto& fault) {
        return fault.Line == line;
    };
    CHECK(assembly.Succeeded ? faults.empty() : assembly.FaultLine == 0 || std::ranges::any_of(faults, isStop));
    CHECK(std::ranges::none_of(faults, [](const auto& fault) { return fault.Cause.empty(); }));
    const auto origin = machine.Memory.begin() + m8085::ProgramOrigin;
    CHECK(std::all_of(machine.Memory.begin(), origin, [](std::uint8_t byte) { return byte == 0; }));
    return 0;
}
