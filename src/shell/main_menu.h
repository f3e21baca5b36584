#pragma once

#include <QMainWindow>

#include "commands/command_buttons.h"
#include "platform/program_text.h"

namespace shell {

// Makes all of the table: menus and entries on the window's menu bar, and the buttons in their places. Each time a menu
// opens, and at no other time, its entries take over whether their buttons are enabled. The letter that opens a menu
// presses no button.
void BuildCommands(QMainWindow& window, const std::vector<commands::Menu>& table, commands::CommandButtons& buttons);

// Adds entries to the editor's context menu. Ticks are set when the menu opens.
void AddEditorCommands(QMainWindow& window, platform::ProgramText& txtCode,
                       const std::vector<commands::EditorCommand>& table, commands::CommandButtons& buttons);

}  // namespace shell
