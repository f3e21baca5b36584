#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

#include "check.h"
#include "machine/full_speed.h"

// Random registers, memory and source lines: nothing reaches outside the arrays, and slices of full-speed running leave
// the same machine as single steps do.
namespace {

using m8085::CodeMap;
using m8085::MachineState;
using m8085::Registers;

constexpr int slices = 4;
constexpr int longestSlice = 1200;
constexpr std::size_t settingBytes = 19;

struct Settings {
    int SliceLength;
    std::size_t CodeMap;
};

// With lines everywhere, and with more and more gaps.
std::vector<CodeMap> MakeCodeMaps() {
    std::vector<CodeMap> maps(4);
    for (std::int32_t address = 0; address < m8085::MemorySize; ++address) {
        const unsigned scattered = static_cast<unsigned>(address) * 40503 >> 8 & 0xFF;
        for (std::size_t map = 0; map < maps.size(); ++map) maps[map].SetLine(address, scattered >= 50 * map);
    }
    return maps;
}

Settings SetUp(MachineState& machine, const std::uint8_t* data, std::size_t size) {
    std::uint8_t bytes[settingBytes] = {};
    std::memcpy(bytes, data, std::min(size, settingBytes));
    for (std::uint8_t code = 0; code < 8; ++code) machine.SetReg(code, bytes[code]);
    machine.SetPSW(static_cast<std::uint16_t>(bytes[7] << 8 | bytes[8]));
    machine.PC = bytes[9] << 8 | bytes[10];
    machine.SP = (bytes[11] << 8 | bytes[12]) + bytes[13] % 2;
    machine.TStates = bytes[14] % 2 == 0 ? 0 : std::numeric_limits<std::int32_t>::max() - bytes[14] * 16;

    for (std::size_t port = 0; port < machine.Ports.size(); ++port)
        machine.Ports[port] = static_cast<std::uint8_t>(port + bytes[15]);

    // The rest lies at PC and goes round the end of memory, so that every limit is near for some input.
    for (std::size_t i = settingBytes; i < size; ++i)
        machine.Memory[(static_cast<std::size_t>(machine.PC) + i - settingBytes) % machine.Memory.size()] = data[i];
    return {1 + (bytes[16] << 8 | bytes[17]) % longestSlice, bytes[18] % std::size_t{4}};
}

// What ExecuteSlice promises, said with the single step. An instruction that leaves PC and all else where they were has
// not been executed, or leaves them for ever.
void StepThrough(MachineState& machine, const CodeMap& codeMap, int instructions) {
    Registers before;
    do {
        before = machine;
        machine.ExecuteInstruction();
    } while (--instructions != 0 && !machine.Halted && before != machine && machine.CanFetch() &&
             codeMap.LineAt(machine.PC) != 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static auto stepped = std::make_unique<MachineState>();
    static auto run = std::make_unique<MachineState>();
    static const std::vector<CodeMap> codeMaps = MakeCodeMaps();
    *stepped = MachineState();
    const Settings settings = SetUp(*stepped, data, size);
    *run = *stepped;
    for (int slice = 0; slice < slices; ++slice) {
        StepThrough(*stepped, codeMaps[settings.CodeMap], settings.SliceLength);
        ExecuteSlice(*run, codeMaps[settings.CodeMap], settings.SliceLength);
    }
    CHECK(*stepped == *run);
    return 0;
}
