#pragma once

#include <QMainWindow>
#include <QScrollArea>
#include <functional>

#include "aids/code_assistant.h"
#include "aids/delay_designer.h"
#include "commands/assemble_command.h"
#include "commands/command_buttons.h"
#include "commands/convert_command.h"
#include "commands/data_file_commands.h"
#include "editor/program_document.h"
#include "execution/run_control.h"
#include "panels/column_list.h"
#include "panels/memory_grid.h"
#include "panels/register_panel.h"

namespace shell {

// The main window: puts the components together, gives their controls their places, and makes the commands of its
// table.
class frmMain : public QMainWindow {
    Q_OBJECT

public:
    // showAbout brings up the About box; endProcess is what the exit sequence ends with.
    frmMain(m8085::MachineState& machine, m8085::CodeMap& codeMap, std::function<void()> showAbout,
            std::function<void()> endProcess);

    // Opens a program by its name, as Open does, and says of every file that cannot be opened why.
    void Open(const QString& name) { document_.OpenNamed(name); }

    // Asks whether to save, stores the memory columns, and ends the process at once. Nothing cancels it.
    void mnuExit_Click();

    // At the end of the desktop session, which may end the process at any moment from now on, or only wants to know
    // that all is stored: stores the memory columns, and asks whether to save if the session lets it.
    void CommitSession(bool mayAsk);

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::vector<commands::Menu> CommandTable();
    std::vector<commands::ContextCommand> EditorCommands();
    std::vector<commands::ContextCommand> GridCommands();
    void PlaceControls();
    void SetTitle(QString title);
    void SingleStep();
    void StepBack();
    void FollowTheEye();
    void GoRound();
    bool IsEditKey(const QKeyEvent& event) const;
    void AddUndoKeys();

    std::function<void()> showAbout_;
    std::function<void()> endProcess_;
    QWidget* client_;
    QScrollArea* clientArea_;
    panels::ColumnList columns_;
    commands::CommandButtons buttons_;
    editor::ProgramDocument document_;
    panels::RegisterPanel registerPanel_;
    panels::MemoryGrid memoryGrid_;
    execution::RunControl runControl_;
    commands::AssembleCommand assembleCommand_;
    commands::ConvertCommand convertCommand_;
    commands::DataFileCommands dataFileCommands_;
    aids::CodeAssistant codeAssistant_;
    aids::DelayDesigner delayDesigner_;
    bool exiting_ = false;
    bool isByMouse_ = false;  // what is going on
    QObject eye_;  // receives what the view follows, and ends before the controls, which lose the focus as they end
};

}  // namespace shell
