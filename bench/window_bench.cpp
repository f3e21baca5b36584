#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <memory>

#include "bounds.h"
#include "editor/program_document.h"
#include "machine/code_map.h"
#include "machine/machine_state.h"
#include "platform/program_text.h"
#include "shell/frm_main.h"

namespace {

struct Workbench {
    Workbench() {
        window.resize(1024, 700);
        window.show();
        QCoreApplication::processEvents();
    }

    platform::ProgramText& Editor() { return *window.findChild<platform::ProgramText*>("txtCode"); }
    void Press(const char* button) { window.findChild<QPushButton*>(button)->click(); }

    std::unique_ptr<m8085::MachineState> machine = std::make_unique<m8085::MachineState>();
    std::unique_ptr<m8085::CodeMap> codeMap = std::make_unique<m8085::CodeMap>();
    shell::frmMain window{*machine, *codeMap, [] {}, [] {}};
};

std::u16string ProgramOfLength(std::size_t characters) {
    const std::u16string lines = u"loop:\r\nmvi a,5 ; load the accumulator\r\nadd b\r\njnz loop ; again\r\n";
    std::u16string text;
    while (text.size() < characters) text += lines;
    text.resize(characters);
    return text;
}

// A key typed in the middle of the text, with all that the program does about a change, painting included.
void TypeCharacter(benchmark::State& state, std::size_t length, double bound) {
    Workbench bench;
    bench.Editor().SetText(ProgramOfLength(length));
    bench.Editor().SetSelectionStart(static_cast<int>(length / 2));
    QCoreApplication::processEvents();
    for (auto _ : state) {
        QTest::keyClick(&bench.Editor(), Qt::Key_A);
        QCoreApplication::processEvents();
    }
    BoundMilliseconds(state, bound);
}

void TypeCharacterIn32765(benchmark::State& state) {
    TypeCharacter(state, 32'765, 2);
}
BENCHMARK(TypeCharacterIn32765)->Unit(benchmark::kMillisecond);

void TypeCharacterInMegabyte(benchmark::State& state) {
    TypeCharacter(state, 1'000'000, 20);
}
BENCHMARK(TypeCharacterInMegabyte)->Unit(benchmark::kMillisecond);

// The text goes into the editor, is coloured and painted.
void Open32765Characters(benchmark::State& state) {
    Workbench bench;
    const std::u16string text = ProgramOfLength(32'765);
    for (auto _ : state) {
        bench.Editor().SetText(text);
        QCoreApplication::processEvents();
    }
    BoundMilliseconds(state, 30);
}
BENCHMARK(Open32765Characters)->Unit(benchmark::kMillisecond);

// The longest program that can be assembled with labels still to be split off, by the button, the grid's refresh
// included.
void AssembleLongestInTheWindow(benchmark::State& state) {
    Workbench bench;
    std::u16string text;
    for (int label = 0; label < 50; ++label) text += u"l: nop\r\n";
    while (text.size() < 32'600) text += u"nop\r\n";
    for (auto _ : state) {
        state.PauseTiming();
        bench.Editor().SetText(text);
        QCoreApplication::processEvents();
        state.ResumeTiming();
        bench.Press("cmdCompile");
    }
    BoundMilliseconds(state, 20);
}
BENCHMARK(AssembleLongestInTheWindow)->Unit(benchmark::kMillisecond);

// Every step is painted before the next one runs.
void SlowRunSteps(benchmark::State& state) {
    Workbench bench;
    bench.Editor().SetText(u"loop:\r\ninr a\r\nsta 9000\r\njmp loop");
    bench.Press("cmdCompile");
    constexpr int tStatesPerRound = 27;
    constexpr int stepsPerRound = 3;
    std::int64_t steps = 0;
    for (auto _ : state) {
        const int before = bench.machine->TStates;
        QTimer::singleShot(200, [&bench] { bench.Press("cmdHalt"); });
        bench.Press("cmdSlowRun");
        steps += (bench.machine->TStates - before) * stepsPerRound / tStatesPerRound;
    }
    BoundItemsPerSecond(state, static_cast<double>(steps), 300);
}
BENCHMARK(SlowRunSteps)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

// From the moment at which a click on Stop arrives during an endless run to the end of the run, the refreshes included.
void StopAnEndlessRun(benchmark::State& state) {
    Workbench bench;
    bench.Editor().SetText(u"loop:\r\ninr a\r\njmp loop");
    bench.Press("cmdCompile");
    for (auto _ : state) {
        constexpr double clickSeconds = 0.03;
        QElapsedTimer sinceStart;
        sinceStart.start();
        QTimer::singleShot(std::chrono::milliseconds(30), Qt::PreciseTimer, [&bench] { bench.Press("cmdHalt"); });
        bench.Press("cmdRun");
        state.SetIterationTime(static_cast<double>(sinceStart.nsecsElapsed()) / 1e9 - clickSeconds);
    }
    BoundMilliseconds(state, 20);
}
BENCHMARK(StopAnEndlessRun)->Unit(benchmark::kMillisecond)->Iterations(5)->UseManualTime();

// Starts the program's window in a process of its own and returns its resident memory, in megabytes, at the moment at
// which the window has taken the events that were waiting for it.
double StartAndEnd() {
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {"--start-window"});
    process.waitForFinished();
    return process.readAllStandardOutput().toDouble();
}

void StartToMainWindow(benchmark::State& state) {
    for (auto _ : state) StartAndEnd();
    BoundMilliseconds(state, 500);
}
BENCHMARK(StartToMainWindow)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();

void MemoryAfterStart(benchmark::State& state) {
    double megabytes = 0;
    for (auto _ : state) megabytes = StartAndEnd();
    BoundMegabytes(state, megabytes, 90);
}
BENCHMARK(MemoryAfterStart)->Iterations(1)->UseRealTime();

}  // namespace
