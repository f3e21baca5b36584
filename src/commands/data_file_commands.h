#pragma once

#include "datafiles/frm_save.h"
#include "execution/run_control.h"
#include "machine/machine_state.h"
#include "panels/memory_grid.h"
#include "platform/file_dialog.h"

namespace commands {

// Loads a data file into memory. False if it cannot be read, is not an ordinary file or not a data file; what stands
// before the place that is at fault has been loaded then.
bool LoadDataFile(const QString& path, m8085::MemoryBytes& memory);

// The commands that move memory contents between the machine and data files. Their boxes appear over the window of
// the memory grid.
class DataFileCommands {
public:
    DataFileCommands(m8085::MachineState& machine, platform::FileDialog& cDialog, execution::RunControl& runControl,
                     panels::MemoryGrid& memoryGrid)
        : machine_(machine), cDialog_(cDialog), runControl_(runControl), memoryGrid_(memoryGrid) {}

    void mnuLoadData_Click();
    void mnuSaveData_Click();

    // Put bytes on the clipboard as a data file has them: that of the current cell, or those that a box asks for.
    void mnuCopyByte_Click();
    void mnuCopyRows_Click();

private:
    static void Copy(const std::string& lines);

    m8085::MachineState& machine_;
    platform::FileDialog& cDialog_;
    execution::RunControl& runControl_;
    panels::MemoryGrid& memoryGrid_;
    datafiles::frmSave* saveDialog_ = nullptr;  // made when it is first opened
};

}  // namespace commands
