#pragma once

#include <QPointer>
#include <QTemporaryDir>
#include <deque>
#include <memory>
#include <random>

#include "invariants.h"

class QFileDialog;
class QMimeData;

// Uses the whole window at random: keys, mouse, menus, boxes, files and the clipboard, with runs going on all the
// while. Before each event it checks what must hold, and reports a fault with the events that led there.
class Monkey {
public:
    // Uses the program until it has left by the exit sequence, which comes after so many events at the latest.
    Monkey(int events, unsigned seed, const QString& folder);

    // How many events are left, now that the program has been left.
    int Use();

private:
    void Start();
    void Tick();
    void End();
    void Report(const QString& fault) const;

    // What it does is noted first.
    void Note(const QString& event);

    void UseWindow();
    void UseRarely();
    void UseMenu(QWidget& menu);
    void UseBox(QWidget& box);
    void UseFileDialog(QFileDialog& dialog);

    void Stop();
    void Assemble();
    void PressButton();
    void PressButtonIn(QWidget& parent);
    void PressAnyKey();
    void PressKeyIn(QWidget& window);
    void ClickAnywhere();
    void ClickOn(QWidget& window);
    void Drag();
    void TurnWheel();
    void TypeProgram();
    void PutLongText();
    void FillClipboard();
    void DropOnEditor();
    void DropOnBox();
    void Compose();
    void AskForMenu();
    void RestOverWidget();
    void UseCell();
    void UseRegister();
    void ChooseEntry();
    void Resize();
    void EndSession();

    QWidget& AnyWindow();
    QPoint AnyPlace(const QWidget& widget);
    QString AnyText();
    std::unique_ptr<QMimeData> AnyContent();

    template <class List>
    auto Any(const List& list) -> decltype(list[0]) {
        using Index = decltype(std::size(list));
        return list[static_cast<Index>(Below(static_cast<int>(std::size(list))))];
    }
    int Below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random_); }
    bool OneIn(int count) { return Below(count) == 0; }

    int remaining_;
    std::mt19937 random_;
    QString folder_;
    bool hasLeft_ = false;
    std::deque<QString> latest_;  // events, the last one last
    QPointer<QWidget> held_;      // where the left mouse button is down
    shell::Workbench workbench_{[this] { hasLeft_ = true; }};
    shell::frmMain& window_ = workbench_.Window;
    Invariants invariants_{workbench_};
};
