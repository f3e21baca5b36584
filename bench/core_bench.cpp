#include <benchmark/benchmark.h>

#include <cstdint>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "allocation_count.h"
#include "bounds.h"
#include "core_programs.h"
#include "machine/full_speed.h"
#include "support/test_rig.h"

namespace {

using support::TestRig;

// From the program's start to its end, one instruction at a time.
std::int64_t CountInstructions(TestRig& rig) {
    std::int64_t count = 0;
    do {
        rig.machine.ExecuteInstruction();
        ++count;
    } while (!rig.machine.Halted && rig.codeMap.LineAt(rig.machine.PC) != 0);
    rig.machine.Halted = false;
    m8085::SetToProgramStart(rig.machine);
    return count;
}

// The Run command itself, over a window that shows nothing. So many instructions after the program's end are marked as
// places to stop at.
void RunAtFullSpeed(benchmark::State& state, std::u16string_view source, int marks = 0) {
    TestRig rig;
    std::u16string text(source);
    for (int mark = 0; mark < marks; ++mark) text += u"nop\r\n";
    const assembler::Assembly assembly = rig.Assemble(text);
    if (!assembly.Succeeded) return state.SkipWithError("the program does not assemble");
    const std::int64_t instructions = CountInstructions(rig);
    execution::RunControl control(rig.machine, rig.codeMap, execution::RunView());
    control.SetAssembled(true, assembly.Instructions);
    std::vector<int> marked;
    for (auto mark = assembly.Instructions.end() - marks; mark != assembly.Instructions.end(); ++mark)
        marked.push_back(rig.codeMap.LineAt(*mark));
    control.SetMarkedLines(marked);
    for (auto _ : state) control.RunProgram();
    BoundItemsPerSecond(state, static_cast<double>(instructions * state.iterations()), 550e6);
}

void RunOfTheLongestDelay(benchmark::State& state) {
    RunAtFullSpeed(state, bench::DelayLoop);
}
BENCHMARK(RunOfTheLongestDelay)->Unit(benchmark::kMillisecond);

void RunOfAMixedProgram(benchmark::State& state) {
    RunAtFullSpeed(state, bench::MixedProgram);
}
BENCHMARK(RunOfAMixedProgram)->Unit(benchmark::kMillisecond);

void RunOfAMixedProgramWith50MarksElsewhere(benchmark::State& state) {
    RunAtFullSpeed(state, bench::MixedProgram, 50);
}
BENCHMARK(RunOfAMixedProgramWith50MarksElsewhere)->Unit(benchmark::kMillisecond);

// Single Step over a window that shows nothing: what a step costs beside its painting, the note with which it can be
// taken back included.
void StepWithoutAWindow(benchmark::State& state) {
    TestRig rig;
    const assembler::Assembly assembly = rig.Assemble(u"loop:\r\ninr m\r\npush h\r\npop h\r\njmp loop");
    if (!assembly.Succeeded) return state.SkipWithError("the program does not assemble");
    execution::RunControl control(rig.machine, rig.codeMap, execution::RunView());
    control.SetAssembled(true, assembly.Instructions);
    for (auto _ : state) control.StepProgram();
    BoundMilliseconds(state, 0.02);
}
BENCHMARK(StepWithoutAWindow)->Unit(benchmark::kMillisecond);

// A profile may cost two thirds of the speed that the same program has without one at the same time.
void ProfileOfAMixedProgram(benchmark::State& state) {
    TestRig rig;
    if (!rig.Assemble(bench::MixedProgram).Succeeded) return state.SkipWithError("the program does not assemble");
    const auto instructions = static_cast<double>(CountInstructions(rig));
    const auto run = [&rig](auto&... profile) {
        while (!rig.machine.Halted) m8085::ExecuteSlice(rig.machine, rig.codeMap, profile..., 1'000'000);
        rig.machine.Halted = false;
        m8085::SetToProgramStart(rig.machine);
    };
    const std::clock_t start = std::clock();
    run();
    const double plainSeconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    const auto profile = std::make_unique<m8085::Profile>();
    for (auto _ : state) run(*profile);
    BoundItemsPerSecond(state, instructions * static_cast<double>(state.iterations()), instructions / plainSeconds / 3);
}
BENCHMARK(ProfileOfAMixedProgram)->Unit(benchmark::kMillisecond);

// What a run asks of the system between its slices: from the first to the last of three.
void AllocationsOfARun(benchmark::State& state) {
    TestRig rig;
    if (!rig.Assemble(u"loop:\r\ninr m\r\npush h\r\npop h\r\njmp loop").Succeeded)
        return state.SkipWithError("the program does not assemble");
    execution::RunControl* running = nullptr;
    int slices = 0;
    int allocations = 0;
    execution::RunView view;
    view.Yield = [&] {
        ++slices;
        if (slices % 3 == 1) allocations -= bench::Allocations;
        if (slices % 3 != 0) return;
        allocations += bench::Allocations;
        running->Stop();
    };
    execution::RunControl control(rig.machine, rig.codeMap, view);
    running = &control;
    for (auto _ : state) control.RunProgram();
    BoundAllocations(state, allocations, 0);
}
BENCHMARK(AllocationsOfARun)->Unit(benchmark::kMillisecond);

// As long as a program can be: short lines, and as many labels and branches as the assembler takes. The labels stand
// before their instructions, so that all of them have to be split off.
std::u16string LongestProgram() {
    constexpr std::size_t longestText = assembler::LongestPreparedText - 1;
    constexpr int labels = 50;
    constexpr std::size_t splitsTake = labels * 2;
    const auto label = [](int number) {
        return std::u16string{u'L', char16_t(u'0' + number / 10), char16_t(u'0' + number % 10)};
    };
    std::u16string text;
    for (int number = 0; number < labels; ++number)
        text += label(number) + u":JMP " + label(labels - 1 - number) + u"\r\n";
    constexpr std::u16string_view lines = u"RC\r\nNOP\r\nINX B\r\nMOV B,H\r\n";
    while (text.size() + lines.size() + splitsTake <= longestText) text += lines;
    text.append(longestText - splitsTake - text.size(), u' ');
    return text;
}

void AssemblyOfTheLongestProgram(benchmark::State& state) {
    const std::u16string text = LongestProgram();
    TestRig rig;
    for (auto _ : state)
        if (!rig.Assemble(text).Succeeded) state.SkipWithError("the program does not assemble");
    BoundMilliseconds(state, 20);
}
BENCHMARK(AssemblyOfTheLongestProgram)->Unit(benchmark::kMillisecond);

}  // namespace
