#pragma once

#include <QMainWindow>
#include <functional>

namespace shell {

// One entry of a menu. An entry without a command is a separator.
struct MenuEntry {
    QString Name;
    QString Caption;
    QKeySequence Shortcut;
    std::function<void()> Command;
};

// Adds a menu to the window's menu bar, or a command that stands on the menu bar itself. Names become object names.
QMenu& AddMenu(QMainWindow& window, const QString& name, const QString& caption, const QList<MenuEntry>& entries);
void AddMenuBarCommand(QMainWindow& window, const MenuEntry& entry);

// Each time the menu opens, and at no other time, the entry takes over whether the button is enabled.
void MirrorButton(QMenu& menu, const QString& entryName, const QWidget& button);

// The letter that opens a menu of the bar does not press a button as well.
void KeepMenuAccessKeys(const QMenuBar& menuBar, QWidget& client);

}  // namespace shell
