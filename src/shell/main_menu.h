#pragma once

#include <QMainWindow>
#include <functional>

#include "commands/command_buttons.h"

namespace shell {

// Makes all of the table: menus and entries on the window's menu bar, and the buttons in their places. Each time a menu
// opens, and at no other time, its entries take over whether their buttons are enabled. The letter that opens a menu
// presses no button.
void BuildCommands(QMainWindow& window, const std::vector<commands::Menu>& table, commands::CommandButtons& buttons);

// Adds entries to a control's context menu. What it returns is to be called when the menu opens.
std::function<void()> AddContextCommands(QMainWindow& window, QWidget& control,
                                         std::vector<commands::ContextCommand> table,
                                         commands::CommandButtons& buttons);

}  // namespace shell
