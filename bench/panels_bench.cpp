#include <QWidget>

#include "bounds.h"
#include "panels/memory_grid.h"
#include "panels/register_panel.h"
#include "platform/twips.h"

// The refreshes without the painting that follows them: that comes with the next look at the event queue, and is part
// of the figure for Slow Run.

namespace {

struct Panels {
    explicit Panels(int pairs) {
        platform::Place(registers, 0, 0, 4575, 1935);
        platform::Place(grid, 0, 2040, 4575, 5535);
        while (columns.ColCount() < pairs) columns.Add("A000");
        grid.FormatGrid();
        grid.RefreshRAMDisplay();
        window.show();
    }

    m8085::MachineState machine;
    panels::ColumnList columns;
    QWidget window;
    QWidget txtCode{&window};
    panels::RegisterPanel registers{machine, txtCode, &window};
    panels::MemoryGrid grid{machine, columns, &window};
};

// Every register, and a byte in every pair of columns, changes from one refresh to the next, and is marked.
void Refresh(benchmark::State& state, int pairs, double boundMilliseconds) {
    BoundMilliseconds(state, boundMilliseconds);
    Panels panels(pairs);
    m8085::MachineState& machine = panels.machine;
    for (std::uint8_t value = 0; auto _ : state) {
        const m8085::MachineState before = machine;
        ++value;
        for (std::uint8_t* target :
             {&machine.A, &machine.B, &machine.C, &machine.D, &machine.E, &machine.H, &machine.L})
            *target = value;
        for (int index = 0; index < panels.columns.ColCount(); ++index)
            machine.Memory[std::size_t(panels.columns.StartAddress(index))] = value;
        machine.SetPSW(value);
        machine.PC += 3;
        machine.TStates += 7;
        const m8085::Changes changes = m8085::Between(before, machine);
        panels.registers.MarkChanges(changes);
        panels.grid.MarkChanges(changes);
        panels.registers.DisplayRegs();
        panels.grid.RefreshRAMDisplay();
        panels.grid.MarkNextAddress(machine.PC);
    }
}

void RefreshPanelsOf4Pairs(benchmark::State& state) {
    Refresh(state, 4, 0.1);
}
BENCHMARK(RefreshPanelsOf4Pairs);

void RefreshPanelsOf51Pairs(benchmark::State& state) {
    Refresh(state, 51, 0.3);
}
BENCHMARK(RefreshPanelsOf51Pairs);

// A column added to a full grid but one, as the command does it, and taken away again outside the measured time.
void AddColumn(benchmark::State& state) {
    BoundMilliseconds(state, 10);
    Panels panels(49);
    for (auto _ : state) {
        panels.columns.Add("B000");
        panels.grid.FormatGrid();
        panels.grid.RefreshRAMDisplay();
        state.PauseTiming();
        panels.columns.Remove("B000");
        panels.grid.FormatGrid();
        state.ResumeTiming();
    }
}
BENCHMARK(AddColumn);

}  // namespace
