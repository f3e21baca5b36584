#include <benchmark/benchmark.h>
#include <malloc.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHelpEvent>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <algorithm>
#include <chrono>
#include <memory>
#include <vector>

#include "bounds.h"
#include "editor/program_file.h"
#include "platform/program_text.h"
#include "shell/settings.h"
#include "shell/workbench.h"

namespace {

struct ShownWorkbench : shell::Workbench {
    ShownWorkbench() : shell::Workbench([] {}) {
        Window.show();
        QCoreApplication::processEvents();
    }

    platform::ProgramText& Editor() { return *Window.findChild<platform::ProgramText*>("txtCode"); }
    void Press(const char* button) { Window.findChild<QPushButton*>(button)->click(); }
};

double HeapMegabytes() {
    const auto heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd) / 1e6;
}

std::u16string ProgramOfLength(std::size_t characters) {
    const std::u16string lines = u"loop:\r\nmvi a,5 ; load the accumulator\r\nadd b\r\njnz loop ; again\r\n";
    std::u16string text;
    while (text.size() < characters) text += lines;
    text.resize(characters);
    return text;
}

// A key typed in the middle of the text, with all that the program does about a change, painting included.
void TypeCharacter(benchmark::State& state, std::size_t length, double bound) {
    ShownWorkbench bench;
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

// The same with a note beside every line, whether in view or not, and with 50 lines marked.
void TypeCharacterAmongNotesAndMarks(benchmark::State& state) {
    ShownWorkbench bench;
    platform::ProgramText& editor = bench.Editor();
    editor.SetText(ProgramOfLength(32'765));
    std::vector<platform::LineNote> notes;
    for (int line = 1; line <= editor.blockCount(); ++line) notes.emplace_back(line, "9000 is 2A");
    editor.Notes().Show(notes);
    for (int mark = 1; mark <= 50; ++mark) editor.ToggleMark(mark * editor.blockCount() / 50);
    editor.SetSelectionStart(editor.Length() / 2);
    QCoreApplication::processEvents();
    for (auto _ : state) {
        QTest::keyClick(&editor, Qt::Key_A);
        QCoreApplication::processEvents();
    }
    BoundMilliseconds(state, 2);
}
BENCHMARK(TypeCharacterAmongNotesAndMarks)->Unit(benchmark::kMillisecond);

// The mouse rests near the end of the longest line that can be assembled.
void TooltipInLongestLine(benchmark::State& state) {
    ShownWorkbench bench;
    platform::ProgramText& editor = bench.Editor();
    std::u16string line;
    while (line.size() < 32'750) line += u"mov a,b ";
    editor.SetText(line);
    QTest::keyClick(&editor, Qt::Key_End);
    QCoreApplication::processEvents();
    const QPoint place = editor.cursorRect().center() - QPoint(13, 0);
    for (auto _ : state) {
        QHelpEvent rest(QEvent::ToolTip, place, editor.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(editor.viewport(), &rest);
    }
    if (QToolTip::text().isEmpty()) state.SkipWithError("there is no tooltip");
    BoundMilliseconds(state, 2);
}
BENCHMARK(TooltipInLongestLine)->Unit(benchmark::kMillisecond);

void TypeCharacterInMegabyte(benchmark::State& state) {
    TypeCharacter(state, 1'000'000, 20);
}
BENCHMARK(TypeCharacterInMegabyte)->Unit(benchmark::kMillisecond);

// A key typed in the middle of one line, which becomes as long as any line of a file that opens. A longer one would be
// refused with a box.
void TypeCharacterInLongestLine(benchmark::State& state) {
    ShownWorkbench bench;
    std::u16string line;
    while (line.size() < editor::LongestLine) line += u"in ";
    line.resize(editor::LongestLine - 1);
    bench.Editor().SetText(line);
    bench.Editor().SetSelectionStart(static_cast<int>(line.size() / 2));
    QCoreApplication::processEvents();
    for (auto _ : state) {
        QTest::keyClick(&bench.Editor(), Qt::Key_A);
        QCoreApplication::processEvents();
        state.PauseTiming();
        QTest::keyClick(&bench.Editor(), Qt::Key_Backspace);
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
    BoundMilliseconds(state, 50);
}
BENCHMARK(TypeCharacterInLongestLine)->Unit(benchmark::kMillisecond);

// The text goes into the editor, is coloured and painted.
void Open32765Characters(benchmark::State& state) {
    ShownWorkbench bench;
    const std::u16string text = ProgramOfLength(32'765);
    for (auto _ : state) {
        bench.Editor().SetText(text);
        QCoreApplication::processEvents();
    }
    BoundMilliseconds(state, 30);
}
BENCHMARK(Open32765Characters)->Unit(benchmark::kMillisecond);

// The most that 300 pastes over a whole program take up at any time, so that they can be undone.
void MemoryOfManyChanges(benchmark::State& state) {
    ShownWorkbench bench;
    const std::u16string text = ProgramOfLength(36'000);
    bench.Editor().SetText(text);
    const double before = HeapMegabytes();
    double most = 0;
    for (auto _ : state) {
        for (int change = 0; change < 300; ++change) {
            bench.Editor().selectAll();
            bench.Editor().ReplaceSelection(text);
            most = std::max(most, HeapMegabytes() - before);
        }
    }
    BoundMegabytes(state, most, 100);
}
BENCHMARK(MemoryOfManyChanges)->Iterations(1)->UseRealTime();

// The longest program that can be assembled with labels still to be split off, by the button, the grid's refresh
// included.
void AssembleLongestInTheWindow(benchmark::State& state) {
    ShownWorkbench bench;
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

// Counts how often a control is painted.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget& control) { control.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++Paintings;
        return false;
    }

    std::int64_t Paintings = 0;
};

// Every step shows its T-states, so a step that was painted is a painting of their box.
void SlowRunPaintedSteps(benchmark::State& state, int pairs, double bound) {
    const panels::ColumnList stored = shell::ReadColumns();
    panels::ColumnList columns = stored;
    while (columns.ColCount() < pairs) columns.Add("A000");
    shell::SaveColumns(columns);
    ShownWorkbench bench;
    shell::SaveColumns(stored);
    bench.Editor().SetText(u"loop:\r\ninr a\r\nsta 9000\r\njmp loop");
    bench.Press("cmdCompile");
    const PaintCounter counter(*bench.Window.findChild<QWidget*>("txtTstates"));
    for (auto _ : state) {
        QTimer::singleShot(200, [&bench] { bench.Press("cmdHalt"); });
        bench.Press("cmdSlowRun");
    }
    BoundItemsPerSecond(state, static_cast<double>(counter.Paintings), bound);
}

void SlowRunPaintedStepsOf4Pairs(benchmark::State& state) {
    SlowRunPaintedSteps(state, 4, 2000);
}
BENCHMARK(SlowRunPaintedStepsOf4Pairs)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

void SlowRunPaintedStepsOf51Pairs(benchmark::State& state) {
    SlowRunPaintedSteps(state, 51, 500);
}
BENCHMARK(SlowRunPaintedStepsOf51Pairs)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

// From the moment at which a click on Stop arrives during an endless run to the end of the run, the refreshes included.
void StopAnEndlessRun(benchmark::State& state) {
    ShownWorkbench bench;
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

// Starts the program in a process of its own and returns its resident memory, in megabytes, at the moment at which the
// window has taken the events that were waiting for it. 0 if the process failed.
double StartAndEnd() {
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {"--start-window"});
    const bool ended = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit;
    return ended ? process.readAllStandardOutput().toDouble() : 0;
}

void StartToMainWindow(benchmark::State& state) {
    for (auto _ : state)
        if (StartAndEnd() == 0) state.SkipWithError("the program did not start");
    BoundMilliseconds(state, 500);
}
BENCHMARK(StartToMainWindow)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();

void MemoryAfterStart(benchmark::State& state) {
    double megabytes = 0;
    for (auto _ : state) megabytes = StartAndEnd();
    if (megabytes == 0) state.SkipWithError("the program did not start");
    BoundMegabytes(state, megabytes, 90);
}
BENCHMARK(MemoryAfterStart)->Iterations(1)->UseRealTime();

}  // namespace
