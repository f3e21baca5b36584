#include <algorithm>
#include <sstream>
#include <string>

#include "assembler/assembler.h"
#include "assembler/program_disassembly.h"
#include "assembler/source_preparation.h"
#include "check.h"
#include "datafiles/data_file.h"
#include "datafiles/memory_image.h"

namespace {

// Bytes, if the file has any for memory or is taken for them, become a program that assembles to them, or it is said
// why not.
void Disassemble(std::string_view file, std::optional<std::int32_t> origin) {
    static m8085::MachineState machine;
    static m8085::CodeMap codeMap;
    const auto [stretches, problem] = memedata::ReadMemoryImage(file, origin);
    CHECK(stretches.empty() != problem.empty());
    const assembler::DisassembledProgram program = assembler::DisassembleProgram(stretches);
    if (!program.Obstacles.empty() || stretches.empty()) return;
    const auto& [address, bytes] = stretches[0];
    const std::u16string text(program.Text.begin(), program.Text.end());
    CHECK(assembler::AssembleProgram(assembler::PrepareProgram(text).Text, machine, codeMap, address).Succeeded);
    CHECK(stretches.size() == 1 && std::equal(bytes.begin(), bytes.end(), machine.Memory.begin() + address));
}

}  // namespace

// Any file may be read. What it leaves in memory comes back when it is written and read again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static m8085::MemoryBytes memory;
    static m8085::MemoryBytes reread;
    memory.fill(0);
    reread.fill(0);
    const std::string content(reinterpret_cast<const char*>(data), size);
    Disassemble(content, std::nullopt);
    Disassemble(content, m8085::ProgramOrigin);
    std::istringstream file(content);
    memedata::LoadDataFile(file, memory);

    const auto isSet = [](std::uint8_t byte) { return byte != 0; };
    const auto first = std::find_if(memory.begin(), memory.end(), isSet);
    if (first == memory.end()) return 0;
    const auto last = std::find_if(memory.rbegin(), memory.rend(), isSet).base() - 1;
    const memedata::AddressRange range{static_cast<std::uint16_t>(first - memory.begin()),
                                       static_cast<std::uint16_t>(last - memory.begin())};
    std::istringstream written(memedata::ComposeDataFile({&range, 1}, memory, "date", "time"));
    CHECK(memedata::LoadDataFile(written, reread));
    CHECK(reread == memory);
    return 0;
}
