#include "shell/main_menu.h"

#include <QMenuBar>
#include <QSet>
#include <utility>

#include "platform/menu.h"

namespace shell {

namespace {

using commands::Command;
using commands::CommandButtons;

QAction* MakeAction(QWidget& owner, const QString& name, const QString& caption) {
    auto* action = new QAction(caption, &owner);
    action->setObjectName(name);
    return action;
}

QAction* MakeEntry(QWidget& owner, const Command& command) {
    QAction* entry = MakeAction(owner, command.Name, command.Caption);
    entry->setShortcut(command.Key);
    entry->setAutoRepeat(command.Repeats);
    return entry;
}

void AddEntry(QMainWindow& window, QMenu& menu, const Command& command, CommandButtons& buttons) {
    QAction* entry = MakeEntry(window, command);
    menu.addAction(entry);
    if (!command.Start) {
        entry->setSeparator(true);
        return;
    }
    platform::Button* button = command.Button ? buttons.Add(command) : nullptr;
    QObject::connect(entry, &QAction::triggered, &window, [&buttons, button, start = command.Start] {
        if (button != nullptr) buttons.NoteStart(button);
        start();
    });
    if (button == nullptr) return;
    QObject::connect(&menu, &QMenu::aboutToShow, entry, [entry, button] { entry->setEnabled(button->isEnabled()); });
}

void KeepMenuAccessKeys(QMainWindow& window) {
    QSet<QKeySequence> taken;
    for (const QAction* action : window.menuBar()->actions()) taken.insert(QKeySequence::mnemonic(action->text()));
    for (platform::Button* button : window.findChildren<platform::Button*>())
        if (taken.contains(button->shortcut())) button->GiveUpAccessKey();
}

}  // namespace

void BuildCommands(QMainWindow& window, const std::vector<commands::Menu>& table, CommandButtons& buttons) {
    for (const commands::Menu& row : table) {
        if (row.Start) {
            QAction* command = MakeAction(window, row.Name, row.Caption);
            window.menuBar()->addAction(command);
            QObject::connect(command, &QAction::triggered, &window, [start = row.Start] { start(); });
            continue;
        }
        auto* menu = new platform::Menu(row.Caption, window.menuBar());
        menu->setObjectName(row.Name);
        window.menuBar()->addMenu(menu);
        for (const Command& command : row.Commands) AddEntry(window, *menu, command, buttons);
    }
    KeepMenuAccessKeys(window);
}

std::function<void()> AddContextCommands(QMainWindow& window, QWidget& control,
                                         std::vector<commands::ContextCommand> table, CommandButtons& buttons) {
    for (const commands::ContextCommand& row : table) {
        QAction* entry = MakeEntry(window, row.Entry);
        control.addAction(entry);
        buttons.Follow(entry, row.When);
        entry->setCheckable(row.IsOn != nullptr);
        QObject::connect(entry, &QAction::triggered, &window, [start = row.Entry.Start] { start(); });
    }
    return [&control, table = std::move(table)] {
        for (qsizetype i = 0; const commands::ContextCommand& row : table) {
            QAction* entry = control.actions()[i++];
            if (row.IsPossible) entry->setEnabled(row.IsPossible());
            if (row.IsOn) entry->setChecked(row.IsOn());
        }
    };
}

}  // namespace shell
