#pragma once

#include <QMainWindow>
#include <functional>

#include "aids/code_assistant.h"
#include "aids/delay_designer.h"
#include "assembler/assemble_command.h"
#include "datafiles/data_files.h"
#include "editor/program_document.h"
#include "execution/command_buttons.h"
#include "execution/run_commands.h"
#include "panels/column_list.h"
#include "panels/memory_grid.h"
#include "panels/register_panel.h"

namespace shell {

// The main window: puts the components together, gives their controls their places, and builds the menus.
class frmMain : public QMainWindow {
    Q_OBJECT

public:
    // showAbout brings up the About box; endProcess is what the exit sequence ends with.
    frmMain(m8085::MachineState& machine, m8085::CodeMap& codeMap, std::function<void()> showAbout,
            std::function<void()> endProcess);

    // Asks whether to save, stores the memory columns, and ends the process at once. Nothing calls it off.
    void mnuExit_Click();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void PlaceControls();
    void BuildMenus(std::function<void()> showAbout);
    void mnuCalculator_Click();
    void SetTitle(QString title);
    void SwitchBetweenEditorAndControls();

    QWidget& client;
    panels::ColumnList columns;
    execution::CommandButtons buttons;
    editor::ProgramDocument document;
    panels::RegisterPanel& registerPanel;
    panels::MemoryGrid& memoryGrid;
    execution::RunCommands runCommands;
    assembler::AssembleCommand assembleCommand;
    aids::CodeAssistant codeAssistant;
    aids::DelayDesigner delayDesigner;
    datafiles::DataFiles dataFiles;
    std::function<void()> endProcess;
    bool exiting = false;
};

}  // namespace shell
