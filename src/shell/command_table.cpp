#include "shell/calculator.h"
#include "shell/frm_main.h"

namespace shell {

// The menus from left to right, their entries from top to bottom, and under an entry the button that starts the same
// command: its name, caption and place, when it can be started, and its tooltip. Eight buttons stand in the row above
// the editor, three in the memory panel.
// clang-format off
std::vector<commands::Menu> frmMain::CommandTable() {
    using enum execution::Startable;
    return {
        {.Name = "mnuFile", .Caption = "&File", .Commands = {
            {"mnuNew", "&New", {"Ctrl+N"}, [this] { document_.mnuNew_Click(); }},
            {"mnuSep1"},
            {"mnuOpen", "&Open...", {"Ctrl+O"}, [this] { document_.mnuOpen_Click(); }},
            {"mnuSave", "&Save", {"Ctrl+S"}, [this] { document_.mnuSave_Click(); }},
            {"mnuSaveAs", "Save &As...", {}, [this] { document_.mnuSaveAs_Click(); }},
            {"mnuSep6"},
            {"mnuExit", "Exit", {}, [this] { mnuExit_Click(); }},
        }},
        {.Name = "mnuEdit", .Caption = "&Edit", .Commands = {
            {"mnuCut", "Cu&t", {"Ctrl+X"}, [this] { document_.mnuCut_Click(); }},
            {"mnuCopy", "&Copy", {"Ctrl+C"}, [this] { document_.mnuCopy_Click(); }},
            {"mnuPaste", "&Paste", {"Ctrl+V"}, [this] { document_.mnuPaste_Click(); }, {}, true},
            {"mnuSep3"},
            {"mnuSelectAll", "&Select All", {"Ctrl+A"}, [this] { document_.mnuSelectAll_Click(); }},
        }},
        {.Name = "mnuCPU", .Caption = "&CPU", .Commands = {
            {"mnuCompile", "&Assemble", {"F4"}, [this] { assembleCommand_.Assemble(); },
                {{"cmdCompile", "&Assemble", client_, {120, 120, 1335, 375}, WhenIdle,
                  "Translate the program into memory, from 8000 on", [this] { assembleCommand_.cmdCompile_Click(); }}}},
            {"mnuSep4"},
            {"mnuRun", "&Run", {"F5"}, [this] { runControl_.RunProgram(); },
                {{"cmdRun", "&Run", client_, {2760, 120, 1335, 375}, WithProgram, "Run the program at full speed"}}},
            {"mnuSlowRun", "S&low Run", {"F3"}, [this] { runControl_.SlowRun(); },
                {{"cmdSlowRun", "S&low Run", client_, {4080, 120, 1335, 375}, WithProgram,
                  "Run the program and show every instruction"}}},
            {"mnuSingleStep", "&Single Step", {"F8"}, [this] { SingleStep(); },
                {{"cmdSingleStep", "&Single Step", client_, {1440, 120, 1335, 375}, WithProgram,
                  "Execute one instruction"}}, true},
            {"mnuSep5"},
            {"mnuHalt", "&Stop", {}, [this] { runControl_.Stop(); },
                {{"cmdHalt", "S&top", client_, {5400, 120, 1335, 375}, DuringRun, "Stop the run (Esc)"}}},
            {"mnuReset", "&Reset", {}, [this] { runControl_.Reset(); },
                {{"cmdReset", "R&eset", client_, {6720, 120, 1335, 375}, WithProgram,
                  "Set PC to 8000, SP to FFF0 and the T-states to 0"}}},
        }},
        {.Name = "mnuTools", .Caption = "&Tools", .Commands = {
            {"mnuCalculator", "C&alculator", {}, [this] { StartCalculator(*client_); }},
            {"mnuDelay", "&Delay Designer", {}, [this] { delayDesigner_.cmdDelay_Click(); },
                {{"cmdDelay", "&Delay Designer", client_, {10080, 120, 1695, 375}, WhenIdle,
                  "Write a loop that takes a given time"}}},
            {"mnuCodeAssistant", "&Code Assistant", {}, [this] { codeAssistant_.cmdCodeAssistant_Click(); },
                {{"cmdCodeAssistant", aids::CodeAssistant::StartCaption, client_, {8040, 120, 2055, 375}, WhenIdle,
                  "Enter instructions by clicks"}}},
        }},
        {.Name = "mnuMemory", .Caption = "&Memory", .Commands = {
            {"mnuMemoryClear", "&Clear", {}, [this] { memoryGrid_.cmdClear_Click(); },
                {{"cmdClear", "Clear", &memoryGrid_, {900, 60, 735, 360}, Always, "Set all of memory to 00"}}},
            {"mnuMemoryAdd", "&Add Column", {}, [this] { memoryGrid_.cmdAdd_Click(); },
                {{"cmdAdd", "Add Column", &memoryGrid_, {1665, 60, 1305, 360}, Always,
                  "Show 256 more bytes of memory"}}},
            {"mnuMemoryRemove", "&Remove Column", {}, [this] { memoryGrid_.cmdRemove_Click(); },
                {{"cmdRemove", "Remove Column", &memoryGrid_, {3000, 60, 1575, 360}, Always,
                  "Take a pair of memory columns away"}}},
            {"mnuSep2"},
            {"mnuLoadData", "&Load Data File", {}, [this] { dataFileCommands_.mnuLoadData_Click(); }},
            {"mnuSaveData", "&Save To Data File...", {}, [this] { dataFileCommands_.mnuSaveData_Click(); }},
        }},
        {.Name = "mnuAbout", .Caption = "&About", .Start = showAbout_},
    };
}

// What the editor's context menu has below the entries about its text.
std::vector<commands::ContextCommand> frmMain::EditorCommands() {
    using enum execution::Startable;
    platform::ProgramText& txtCode = document_.txtCode();
    return {
        {.Entry = {"mnuStopHere", "Stop &Here", {"F9"}, [&txtCode] { txtCode.ToggleMark(txtCode.CurrentLine()); }},
         .IsOn = [&txtCode] { return txtCode.Marks().Has(txtCode.CurrentLine()); }},
        {.Entry = {"mnuStepBack", "Step &Back", {"Shift+F8"}, [this] { StepBack(); }, {}, true},
         .When = WithProgram},
        {.Entry = {"mnuCopyListing", "Copy &Listing", {}, [this] { assembleCommand_.mnuCopyListing_Click(); }},
         .IsPossible = [this] { return assembleCommand_.HasListing(); }},
        {.Entry = {"mnuConvert", "Convert from &Elsewhere", {}, [this] { convertCommand_.Convert(); }}},
    };
}

// The context menu of the memory grid, and what that of an open cell has below the entries about its text.
std::vector<commands::ContextCommand> frmMain::GridCommands() {
    return {
        {.Entry = {"mnuCopyByte", "Copy with &Address", {}, [this] { dataFileCommands_.mnuCopyByte_Click(); }}},
        {.Entry = {"mnuCopyRows", "Copy R&ows...", {}, [this] { dataFileCommands_.mnuCopyRows_Click(); }}},
        {.Entry = {"mnuGoTo", "&Go to Address...", {}, [this] { memoryGrid_.mnuGoTo_Click(); }}},
    };
}
// clang-format on

}  // namespace shell
