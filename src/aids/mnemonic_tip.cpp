#include "aids/mnemonic_tip.h"

#include <algorithm>
#include <limits>

#include "assembler/disassembly.h"
#include "assembler/instruction_table.h"
#include "assembler/instruction_words.h"

namespace aids {

namespace {

// Of all forms of a mnemonic.
struct Figures {
    int Length = 0;
    int LeastTStates = std::numeric_limits<int>::max();
    int MostTStates = 0;
    bool IsConditional = false;
};

Figures FiguresOf(std::string_view mnemonic) {
    Figures figures;
    for (const assembler::InstructionRow& row : assembler::InstructionRows()) {
        if (row.Mnemonic != mnemonic) continue;
        const assembler::InstructionTime time = assembler::TimeOf(row.Opcode);
        figures.Length = assembler::InstructionLength(row.Opcode);
        figures.LeastTStates = std::min({figures.LeastTStates, time.Taken, time.NotTaken});
        figures.MostTStates = std::max({figures.MostTStates, time.Taken, time.NotTaken});
        figures.IsConditional = time.Taken != time.NotTaken;
    }
    return figures;
}

std::string TStatesText(const Figures& figures) {
    std::string least = std::to_string(figures.LeastTStates) + " T-states";
    if (figures.LeastTStates == figures.MostTStates) return least;
    const std::string most = std::to_string(figures.MostTStates);
    return figures.IsConditional ? least + ", " + most + " if the condition holds" : least + ", " + most + " with M";
}

}  // namespace

std::string MnemonicTip(std::string_view mnemonic) {
    const assembler::InstructionWords& words = assembler::WordsFor(mnemonic);
    const Figures figures = FiguresOf(mnemonic);
    const std::string flags = words.Flags.empty() ? "no flags" : "flags " + std::string(words.Flags);
    return std::string(words.Does) + "\n" + std::to_string(figures.Length) +
           (figures.Length == 1 ? " byte; " : " bytes; ") + TStatesText(figures) + "; " + flags;
}

}  // namespace aids
