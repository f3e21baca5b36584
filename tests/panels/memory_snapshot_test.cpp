#include "panels/memory_snapshot.h"

#include <gtest/gtest.h>

namespace panels {

class MemorySnapshotTest : public testing::Test {
protected:
    MemorySnapshotTest() {
        list.Add("FEFF");
        cells.FormatFor(list);
        machine.Memory[0x80FF] = 0xA5;
        machine.Memory[0xFFFE] = 0x0E;
        machine.Ports[0xFF] = 0x70;
    }

    m8085::MachineState machine;
    ColumnList list;
    MemorySnapshot cells;
};

TEST_F(MemorySnapshotTest, ShowsAddressesAndBytesOfEachPairAndThePortsLast) {
    EXPECT_EQ(cells.Columns(), 10);
    EXPECT_EQ(cells.Text(0, 0), "");
    EXPECT_TRUE(cells.TakeFrom(machine, list));
    EXPECT_EQ(cells.Text(0, 0), "8000");
    EXPECT_EQ(cells.Text(255, 0) + cells.Text(255, 1), "80FFA5");
    EXPECT_EQ(cells.Text(255, 6) + cells.Text(255, 7), "FFFE0E");
    EXPECT_EQ(cells.Text(0, 8) + cells.Text(0, 9), "0000");
    EXPECT_EQ(cells.Text(255, 8) + cells.Text(255, 9), "FF70");
}

TEST_F(MemorySnapshotTest, StaysWhileTheMachineGoesOn) {
    cells.TakeFrom(machine, list);
    EXPECT_FALSE(cells.TakeFrom(machine, list));
    machine.Memory[0x8000] = 1;
    EXPECT_EQ(cells.Text(0, 1), "00");
    EXPECT_TRUE(cells.TakeFrom(machine, list));
    EXPECT_EQ(cells.Text(0, 1), "01");
}

TEST_F(MemorySnapshotTest, StoresAtTheAddressShown) {
    cells.Store(machine, 0, 1, 9);
    EXPECT_EQ(machine.Memory[0], 0);
    cells.TakeFrom(machine, list);
    cells.Store(machine, 3, 1, 0x11);
    cells.Store(machine, 255, 7, 0x22);
    cells.Store(machine, 0xFE, 9, 0x33);
    EXPECT_EQ(machine.Memory[0x8003], 0x11);
    EXPECT_EQ(machine.Memory[0xFFFE], 0x22);
    EXPECT_EQ(machine.Memory[0xFE], 0);
    EXPECT_EQ(machine.Ports[0xFE], 0x33);
    EXPECT_EQ(cells.Text(3, 1), "00");
}

}  // namespace panels
