#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>

#include "check.h"
#include "machine/code_map.h"
#include "machine/full_speed.h"
#include "machine/machine_state.h"

// Random registers and memory: nothing reaches outside the arrays, and the full-speed loop leaves the same machine as
// single steps do.
namespace {

constexpr int steps = 200;
constexpr std::size_t registerBytes = 16;

void SetUp(m8085::MachineState& machine, const std::uint8_t* data, std::size_t size) {
    std::uint8_t bytes[registerBytes] = {};
    std::memcpy(bytes, data, std::min(size, registerBytes));
    for (std::uint8_t code = 0; code < 8; ++code) machine.SetReg(code, bytes[code]);
    machine.SetPSW(static_cast<std::uint16_t>(bytes[7] << 8 | bytes[8]));
    machine.PC = bytes[9] << 8 | bytes[10];
    machine.SP = (bytes[11] << 8 | bytes[12]) + bytes[13] % 2;
    machine.TStates = bytes[14] % 2 == 0 ? 0 : 0x7FFFFF00;

    for (std::size_t port = 0; port < machine.Ports.size(); ++port)
        machine.Ports[port] = static_cast<std::uint8_t>(port + bytes[15]);

    // The rest lies at PC and goes round the end of memory, so that every limit is near for some input.
    for (std::size_t i = registerBytes; i < size; ++i)
        machine.Memory[(static_cast<std::size_t>(machine.PC) + i - registerBytes) % machine.Memory.size()] = data[i];
}

bool Same(const m8085::MachineState& one, const m8085::MachineState& other) {
    return one.GetPSW() == other.GetPSW() && one.GetRegPair(0, false) == other.GetRegPair(0, false) &&
           one.GetRegPair(1, false) == other.GetRegPair(1, false) &&
           one.GetRegPair(2, false) == other.GetRegPair(2, false) && one.SP == other.SP && one.PC == other.PC &&
           one.Halted == other.Halted && one.TStates == other.TStates && one.Memory == other.Memory &&
           one.Ports == other.Ports && one.Refused.Reason == other.Refused.Reason &&
           one.Refused.PC == other.Refused.PC && one.Refused.Opcode == other.Refused.Opcode &&
           one.Refused.Operand == other.Refused.Operand;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto codeMap = [] {
        auto map = std::make_unique<m8085::CodeMap>();
        for (std::int32_t address = 0; address < m8085::MemorySize; ++address) map->SetLine(address, 1);
        return map;
    }();
    static auto stepped = std::make_unique<m8085::MachineState>();
    static auto run = std::make_unique<m8085::MachineState>();
    *stepped = m8085::MachineState();
    SetUp(*stepped, data, size);
    *run = *stepped;

    int executed = 0;
    while (executed < steps && !stepped->Halted && stepped->Refused.Reason == m8085::Limit::None) {
        stepped->ExecuteInstruction();
        ++executed;
    }
    for (int done = 0; done < executed; done += 7) m8085::ExecuteSlice(*run, *codeMap, std::min(7, executed - done));
    // A slice leaves a refusal to the next one.
    if (stepped->Refused.Reason != m8085::Limit::None) m8085::ExecuteSlice(*run, *codeMap, 1);
    CHECK(Same(*stepped, *run));
    return 0;
}
