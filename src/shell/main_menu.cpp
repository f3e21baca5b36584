#include "shell/main_menu.h"

#include <QMenu>
#include <QMenuBar>
#include <QSet>

#include "platform/button.h"

namespace shell {

namespace {

QAction& MakeAction(QWidget& owner, const MenuEntry& entry) {
    auto* action = new QAction(entry.Caption, &owner);
    action->setObjectName(entry.Name);
    if (!entry.Command) {
        action->setSeparator(true);
        return *action;
    }
    action->setShortcut(entry.Shortcut);
    QObject::connect(action, &QAction::triggered, &owner, [command = entry.Command] { command(); });
    return *action;
}

}  // namespace

QMenu& AddMenu(QMainWindow& window, const QString& name, const QString& caption, const QList<MenuEntry>& entries) {
    QMenu* menu = window.menuBar()->addMenu(caption);
    menu->setObjectName(name);
    for (const MenuEntry& entry : entries) menu->addAction(&MakeAction(window, entry));
    return *menu;
}

void AddMenuBarCommand(QMainWindow& window, const MenuEntry& entry) {
    window.menuBar()->addAction(&MakeAction(window, entry));
}

void MirrorButton(QMenu& menu, const QString& entryName, const QWidget& button) {
    for (QAction* action : menu.actions())
        if (action->objectName() == entryName)
            QObject::connect(&menu, &QMenu::aboutToShow, action,
                             [action, &button] { action->setEnabled(button.isEnabled()); });
}

void KeepMenuAccessKeys(const QMenuBar& menuBar, QWidget& client) {
    QSet<QKeySequence> taken;
    for (const QAction* action : menuBar.actions()) taken.insert(QKeySequence::mnemonic(action->text()));
    for (platform::Button* button : client.findChildren<platform::Button*>())
        if (taken.contains(button->shortcut())) button->GiveUpAccessKey();
}

}  // namespace shell
