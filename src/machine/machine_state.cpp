#include "machine/machine_state.h"

namespace m8085 {

std::uint8_t MachineState::GetReg(std::uint8_t code) {
    const auto place = RegisterOfCode[code & 7];
    return place == nullptr ? ReadHLOperand() : this->*place;
}

void MachineState::SetReg(std::uint8_t code, std::uint8_t value) {
    const auto place = RegisterOfCode[code & 7];
    if (place == nullptr)
        WriteHLOperand(value);
    else
        this->*place = value;
}

std::uint8_t MachineState::ReadHLOperand() {
    Charge(MemoryOperandTStates);
    return Memory[Join(H, L)];
}

void MachineState::WriteHLOperand(std::uint8_t value) {
    Charge(MemoryOperandTStates);
    Memory[Join(H, L)] = value;
}

void SetToProgramStart(MachineState& machine) {
    machine.PC = ProgramOrigin;
    machine.SP = ProgramStack;
    machine.TStates = 0;
}

}  // namespace m8085
