#include <benchmark/benchmark.h>

#include <sstream>

#include "bounds.h"
#include "datafiles/data_file.h"

namespace {

constexpr memedata::AddressRange allOfMemory{0x0000, 0xFFFF};

m8085::MemoryBytes BytesOfEveryValue() {
    m8085::MemoryBytes memory{};
    for (std::size_t i = 0; i < memory.size(); ++i) memory[i] = static_cast<std::uint8_t>(i * 37);
    return memory;
}

void ComposeDataFileOfAllMemory(benchmark::State& state) {
    const m8085::MemoryBytes memory = BytesOfEveryValue();
    for (auto _ : state)
        benchmark::DoNotOptimize(memedata::ComposeDataFile({&allOfMemory, 1}, memory, "24.11.2026", "17:24:23"));
    BoundMilliseconds(state, 5);
}
BENCHMARK(ComposeDataFileOfAllMemory);

void ReadDataFileOfAllMemory(benchmark::State& state) {
    const std::string text =
        memedata::ComposeDataFile({&allOfMemory, 1}, BytesOfEveryValue(), "24.11.2026", "17:24:23");
    m8085::MemoryBytes memory{};
    for (auto _ : state) {
        std::istringstream file(text);
        if (!memedata::LoadDataFile(file, memory)) state.SkipWithError("the file was not read");
        benchmark::ClobberMemory();
    }
    BoundMilliseconds(state, 5);
}
BENCHMARK(ReadDataFileOfAllMemory);

}  // namespace
