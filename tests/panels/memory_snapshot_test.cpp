#include "panels/memory_snapshot.h"

#include <gtest/gtest.h>

namespace panels {

TEST(MemorySnapshot, ShowsAndStoresWhatTheMachineHeldWhenItWasTaken) {
    m8085::MachineState machine;
    ColumnList list;
    list.Add("FEFF");
    MemorySnapshot cells;
    cells.FormatFor(list);
    cells.Store(machine, 0, 1, 9);
    EXPECT_EQ(machine.Memory[0] + machine.Memory[0x8000], 0);
    EXPECT_EQ(cells.Text(0, 0), "");

    machine.Memory[0xFFFE] = 0x0E;
    machine.Ports[0xFF] = 0x70;
    EXPECT_EQ(cells.TakeFrom(machine, list).size(), 5u * 256);
    EXPECT_EQ(cells.Text(255, 0) + cells.Text(255, 1), "80FF00");
    EXPECT_EQ(cells.Text(255, 6) + cells.Text(255, 7), "FFFE0E");
    EXPECT_EQ(cells.Text(255, 8) + cells.Text(255, 9), "FF70");

    cells.Store(machine, 3, 1, 0x11);
    cells.Store(machine, 3, 9, 0x33);
    EXPECT_EQ(machine.Memory[0x8003], 0x11);
    EXPECT_EQ(machine.Ports[3], 0x33);
    EXPECT_EQ(machine.Memory[3], 0);
    EXPECT_EQ(cells.Text(3, 1), "00");
    EXPECT_EQ(cells.TakeFrom(machine, list).size(), 2u);
    EXPECT_EQ(cells.Text(3, 1) + cells.Text(3, 9), "1133");
}

}  // namespace panels
