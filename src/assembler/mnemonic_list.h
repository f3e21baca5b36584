#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace assembler {

// The mnemonics in five lines, one for each group of instructions, as the colouring and the Code Assistant read them.
// A space or a line feed stands before every word.
inline constexpr std::string_view MnemonicList =
    " LDA LDAX LHLD LXI MOV MVI POP PUSH SHLD SPHL STA STAX XCHG XTHL \n"
    "ACI ADC ADD ADI DAA DAD DCR DCX INR INX RAL RAR RLC RRC SBB SBI SUB SUI \n"
    "ANA ANI CMA CMC CMP CPI ORA ORI STC XRA XRI \n"
    "CALL CC CM CNC CNZ CP CPE CPO CZ JC JM JMP JNC JNZ JP JPE JPO JZ RC RET RM RNC RNZ RP RPE RPO RZ PCHL \n"
    "HLT IN NOP OUT";

// Its words, in alphabetical order.
inline constexpr auto Mnemonics = [] {
    std::array<std::string_view, 75> words;
    std::string_view rest = MnemonicList;
    for (std::string_view& word : words) {
        rest.remove_prefix(rest.find_first_not_of(" \n"));
        word = rest.substr(0, rest.find_first_of(" \n"));
        rest.remove_prefix(word.size());
    }
    std::ranges::sort(words);
    return words;
}();

// Whether the items name all mnemonics of the list, and nothing else.
constexpr bool NameAllMnemonics(const auto& items) {
    const auto isMnemonic = [](const auto& item) { return std::ranges::binary_search(Mnemonics, item.Mnemonic); };
    const auto isNamed = [&](std::string_view mnemonic) {
        return std::ranges::any_of(items, [=](const auto& item) { return item.Mnemonic == mnemonic; });
    };
    return std::ranges::all_of(items, isMnemonic) && std::ranges::all_of(Mnemonics, isNamed);
}

}  // namespace assembler
