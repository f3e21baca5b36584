#include "monkey.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QSettings>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "monkey_input.h"

namespace {

const QStringList programFiles = {"p0.asm", "p1.asm", "p2.asm"};
const QStringList openFiles = {"p0.asm", "p1.asm", "good.dat", "bad.dat", "noise.dat", "missing"};
const QStringList boxes = {"txtA", "txtB", "txtH", "txtL", "txtF", "txtPC"};
const QStringList outputFiles = {"out0.dat", "out1.dat"};

constexpr Qt::Key keys[] = {
    Qt::Key_0,      Qt::Key_3,    Qt::Key_A,     Qt::Key_C,        Qt::Key_D,      Qt::Key_F,
    Qt::Key_L,      Qt::Key_R,    Qt::Key_S,     Qt::Key_T,        Qt::Key_Colon,  Qt::Key_Up,
    Qt::Key_Down,   Qt::Key_Left, Qt::Key_Right, Qt::Key_Tab,      Qt::Key_Return, Qt::Key_Escape,
    Qt::Key_Delete, Qt::Key_Home, Qt::Key_End,   Qt::Key_F3,       Qt::Key_F4,     Qt::Key_F5,
    Qt::Key_F6,     Qt::Key_F8,   Qt::Key_F9,    Qt::Key_Down,     Qt::Key_PageUp, Qt::Key_Space,
    Qt::Key_Insert, Qt::Key_Up,   Qt::Key_V,     Qt::Key_PageDown, Qt::Key_Z,      Qt::Key_Backspace};
constexpr Qt::KeyboardModifier modifiers[] = {Qt::NoModifier,    Qt::NoModifier,      Qt::NoModifier,
                                              Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier};

QString NameOf(const QObject& object) {
    return object.objectName().isEmpty() ? object.metaObject()->className() : object.objectName();
}

}  // namespace

Monkey::Monkey(int events, unsigned seed, const QString& folder) : remaining_(events), random_(seed), folder_(folder) {}

int Monkey::Use() {
    workbench_.Start();
    if (OneIn(2)) window_.showNormal();
    Start();
    QApplication::exec();
    return remaining_;
}

void Monkey::Start() {
    QTimer::singleShot(0, [this] { Tick(); });
}

// One event. The next one is due before this one is done with, so that it also comes inside runs, menus and boxes.
void Monkey::Tick() {
    if (hasLeft_) return End();
    if (const auto fault = invariants_.FindFault()) Report(*fault);
    invariants_.BeginEvent();
    Start();
    QWidget* box = QApplication::activeModalWidget();
    if (remaining_-- <= 0 && box == nullptr && QApplication::activePopupWidget() == nullptr) {
        window_.close();
    } else if (held_) {
        Drag();
    } else if (QWidget* menu = QApplication::activePopupWidget()) {
        UseMenu(*menu);
    } else if (box != nullptr && !OneIn(4)) {
        UseBox(*box);
    } else {
        UseWindow();  // also under a box, which must keep it all away
    }
    invariants_.EndEvent();
}

// The process would be gone by now. What is still going on here is brought to its end.
void Monkey::End() {
    const QSettings settings(QSettings::NativeFormat, QSettings::UserScope, "Velmora", "Velmora");
    const int pairs = window_.findChild<QTableView*>("grdRAM")->model()->columnCount() / 2;
    if (settings.value("meminfo/colcount").toInt() != pairs - 1) Report("the columns were not stored");

    if (invariants_.IsRunning()) window_.findChild<QAbstractButton*>("cmdHalt")->click();
    QWidget* open = QApplication::activePopupWidget();
    if (open == nullptr) open = QApplication::activeModalWidget();
    if (open != nullptr) open->close();
    if (open != nullptr || invariants_.IsRunning())
        Start();
    else
        QApplication::exit();
}

void Monkey::Report(const QString& fault) const {
    for (const QString& event : latest_) std::printf("  %s\n", qPrintable(event));
    std::printf("FAULT: %s\n", qPrintable(fault));
    std::fflush(stdout);
    std::_Exit(EXIT_FAILURE);
}

void Monkey::Note(const QString& event) {
    constexpr std::size_t kept = 30;
    latest_.push_back(QString(event).replace('\n', ' '));
    if (latest_.size() > kept) latest_.pop_front();
}

void Monkey::UseWindow() {
    constexpr std::pair<int, void (Monkey::*)()> actions[] = {
        {14, &Monkey::PressAnyKey}, {5, &Monkey::PressButton},   {4, &Monkey::TypeProgram}, {3, &Monkey::Assemble},
        {3, &Monkey::UseCell},      {2, &Monkey::ClickAnywhere}, {2, &Monkey::ChooseEntry}, {2, &Monkey::FillClipboard},
        {1, &Monkey::UseRegister},  {1, &Monkey::TurnWheel},     {1, &Monkey::Drag},        {3, &Monkey::UseRarely}};
    if (invariants_.IsRunning() && OneIn(25)) return Stop();
    int sum = 0;
    for (const auto& [weight, action] : actions) sum += weight;
    int chosen = Below(sum);
    for (const auto& [weight, action] : actions)
        if ((chosen -= weight) < 0) return (this->*action)();
}

void Monkey::UseRarely() {
    switch (Below(12)) {
        case 0: return OneIn(3) ? PutLongText() : TypeProgram();
        case 1: return DropOnEditor();
        case 2: return DropOnBox();
        case 3: return Resize();
        case 4: return EndSession();
        case 5:
        case 6: return AskForMenu();
        case 7:
        case 8: return Compose();
        default: return RestOverWidget();
    }
}

// The menu's letters and cursor keys, and the mouse.
void Monkey::UseMenu(QWidget& menu) {
    if (OneIn(3)) return ClickOn(menu);
    PressKeyIn(OneIn(2) ? window_ : menu);
}

void Monkey::UseBox(QWidget& box) {
    if (auto* file = qobject_cast<QFileDialog*>(&box)) return UseFileDialog(*file);
    if (auto* input = qobject_cast<QInputDialog*>(&box)) {
        input->setTextValue(AnyText());
        Note("answer " + input->textValue());
        return input->done(Below(2));
    }
    if (OneIn(2)) return PressKeyIn(box);
    if (OneIn(2)) return PressButtonIn(box);
    Note("close " + box.windowTitle());
    box.close();
}

// No keys and no mouse: they could reach any file of the system.
void Monkey::UseFileDialog(QFileDialog& dialog) {
    const bool isForData = dialog.parentWidget()->objectName() == "frmSave";
    const bool isForOpen = dialog.acceptMode() == QFileDialog::AcceptOpen;
    const QString path = folder_ + '/' + Any(isForData ? outputFiles : isForOpen ? openFiles : programFiles);
    if (OneIn(3)) {
        Note("choose no file");
        return dialog.reject();
    }
    Note("choose " + path);
    dialog.findChild<QLineEdit*>("fileNameEdit")->setText(path);
    static_cast<QDialog&>(dialog).accept();
}

void Monkey::Stop() {
    Note("stop");
    auto& stop = *window_.findChild<QAbstractButton*>("cmdHalt");
    input::Click(stop, stop.rect().center());
}

void Monkey::Assemble() {
    Note("assemble by key");
    input::PressKey(window_, Qt::Key_F4);
}

void Monkey::PressButton() {
    PressButtonIn(OneIn(2) ? window_ : AnyWindow());
}

void Monkey::PressButtonIn(QWidget& parent) {
    auto buttons = parent.findChildren<QAbstractButton*>();
    buttons.removeIf([](const QAbstractButton* button) { return !button->isVisible(); });
    if (buttons.isEmpty()) return;
    QAbstractButton* button = Any(buttons);
    Note("press " + NameOf(*button));
    input::Click(*button, button->rect().center());
}

void Monkey::PressAnyKey() {
    QWidget* active = QApplication::activeWindow();
    PressKeyIn(active == nullptr ? AnyWindow() : *active);
}

void Monkey::PressKeyIn(QWidget& window) {
    const Qt::Key key = Any(keys);
    const Qt::KeyboardModifier modifier = Any(modifiers);
    Note("key " + QKeySequence(modifier | key).toString() + " in " + NameOf(window));
    input::PressKey(window, key, modifier);
}

void Monkey::ClickAnywhere() {
    ClickOn(AnyWindow());
}

// Now and then twice in the same place, or with the other button.
void Monkey::ClickOn(QWidget& window) {
    const QPointer<QWidget> target = &window;
    const QPoint at = AnyPlace(window);
    const Qt::MouseButton button = OneIn(6) ? Qt::RightButton : Qt::LeftButton;
    Note(QString("click at %1,%2 in ").arg(at.x()).arg(at.y()) + NameOf(window));
    input::Click(window, at, button);
    if (target && OneIn(4)) input::ClickAgain(window, at);
}

// The button goes down, is drawn about for some events, and comes up.
void Monkey::Drag() {
    QWidget& widget = held_ ? *held_ : static_cast<QWidget&>(*window_.findChild<platform::ProgramText*>("txtCode"));
    const QPoint at = AnyPlace(widget);
    Note(QString("drag at %1,%2").arg(at.x()).arg(at.y()));
    if (!held_) {
        if (!window_.isActiveWindow()) return window_.activateWindow();
        held_ = &widget;
        input::MouseDown(widget, at);
    } else if (OneIn(3)) {
        held_ = nullptr;
        input::MouseUp(widget, at);
    } else {
        input::MouseMove(widget, at);
    }
}

void Monkey::TurnWheel() {
    QWidget& window = AnyWindow();
    Note("wheel");
    input::Wheel(window, AnyPlace(window), Below(9) - 4);
}

void Monkey::TypeProgram() {
    auto& editor = *window_.findChild<platform::ProgramText*>("txtCode");
    const QString text = AnyText();
    Note("write " + text);
    if (OneIn(4)) editor.SetSelectionStart(Below(200));
    if (OneIn(8)) editor.selectAll();
    editor.ReplaceSelection(text.toStdU16String());
}

// Near the most characters that can be assembled, or near the most labels.
void Monkey::PutLongText() {
    QString text = OneIn(2) ? QString("hlt\n") : QString();
    for (int label = 98 + Below(5); OneIn(2) && label > 0; --label) text += "l" + QString::number(label) + ": nop\n";
    if (OneIn(2)) text += QString(32'700 + Below(80) - static_cast<int>(text.size()), OneIn(2) ? ' ' : ':');
    Note("write " + QString::number(text.size()) + " characters");
    window_.findChild<platform::ProgramText*>("txtCode")->SetText(text.toStdU16String());
}

std::unique_ptr<QMimeData> Monkey::AnyContent() {
    auto content = std::make_unique<QMimeData>();
    switch (Below(5)) {
        case 0: content->setText(AnyText()); break;
        case 1: content->setData("text/rtf", AnyText().toUtf8()); break;
        case 2: content->setData("text/rtf", "{\\rtf1 \xFF\\par}"); break;
        case 3: content->setUrls({QUrl::fromLocalFile(folder_ + '/' + Any(openFiles))}); break;
        default: content->setHtml("<b>nop</b><br>hlt"); break;
    }
    return content;
}

void Monkey::FillClipboard() {
    auto content = AnyContent();
    Note("clipboard with " + content->formats().join(','));
    QGuiApplication::clipboard()->setMimeData(content.release());
}

void Monkey::DropOnEditor() {
    const auto content = AnyContent();
    Note("drop " + content->formats().join(','));
    if (QApplication::activeModalWidget() != nullptr) return;
    input::Drop(*window_.findChild<platform::ProgramText*>("txtCode")->viewport(), *content);
}

void Monkey::DropOnBox() {
    auto& box = *window_.findChild<QLineEdit*>(Any(boxes));
    if (!box.isVisible() || QApplication::activeModalWidget() != nullptr) return;
    const auto content = AnyContent();
    Note("drop " + content->formats().join(',') + " on " + NameOf(box));
    input::Drop(box, *content);
}

// As an input method does: what is being composed, what it comes to, or both, or the end of it.
void Monkey::Compose() {
    auto* editor = qobject_cast<platform::ProgramText*>(QApplication::focusWidget());
    if (editor == nullptr || QApplication::activePopupWidget() != nullptr) return;
    QInputMethodEvent composition(OneIn(2) ? AnyText() : QString(), {});
    if (OneIn(2)) composition.setCommitString(AnyText());
    Note("compose " + composition.preeditString() + ", put in " + composition.commitString());
    QCoreApplication::sendEvent(editor, &composition);
}

void Monkey::AskForMenu() {
    QWidget* widget = QApplication::focusWidget();
    if (widget == nullptr || QApplication::activePopupWidget() != nullptr) return;
    if (auto* area = qobject_cast<QAbstractScrollArea*>(widget)) widget = area->viewport();
    const QPoint at = AnyPlace(*widget);
    const auto reason = OneIn(2) ? QContextMenuEvent::Mouse : QContextMenuEvent::Keyboard;
    Note(QString("menu at %1,%2 of ").arg(at.x()).arg(at.y()) + NameOf(*widget));
    QContextMenuEvent ask(reason, at, widget->mapToGlobal(at));
    QCoreApplication::sendEvent(widget, &ask);
}

void Monkey::RestOverWidget() {
    auto widgets = window_.findChildren<QWidget*>();
    widgets.removeIf([](const QWidget* widget) { return !widget->isVisible(); });
    QWidget& widget = *Any(widgets);
    const QPoint at = AnyPlace(widget);
    Note("rest over " + NameOf(widget));
    QHelpEvent rest(QEvent::ToolTip, at, widget.mapToGlobal(at));
    QCoreApplication::sendEvent(&widget, &rest);
}

// Clicks a cell, and mostly types into it.
void Monkey::UseCell() {
    auto& grid = *window_.findChild<QTableView*>("grdRAM");
    if (!grid.isVisible()) return;
    Note("use cell");
    input::Click(*grid.viewport(), AnyPlace(*grid.viewport()));
    if (OneIn(3)) return;
    input::PressKey(window_, Any(keys));
    input::PressKey(window_, Any(keys));
}

void Monkey::UseRegister() {
    auto& box = *window_.findChild<QLineEdit*>(Any(boxes));
    if (!box.isVisible()) return;
    Note("use " + NameOf(box));
    input::Click(box, box.rect().center());
    input::PressKey(window_, Any(keys));
}

// What stands in the grid's own menu alone cannot be chosen while the Code Assistant is in its place.
void Monkey::ChooseEntry() {
    const auto& grid = *window_.findChild<QTableView*>("grdRAM");
    auto entries = window_.findChildren<QAction*>();
    entries.removeIf([&grid](QAction* entry) {
        return !entry->objectName().startsWith("mnu") || (!grid.isVisible() && grid.actions().contains(entry));
    });
    QAction& entry = *Any(entries);
    if (QApplication::activeModalWidget() != nullptr || (entry.objectName() == "mnuExit" && !OneIn(10))) return;
    Note("choose " + entry.objectName());
    entry.trigger();
}

void Monkey::Resize() {
    Note("resize");
    if (OneIn(3)) return window_.showMaximized();
    window_.showNormal();
    window_.resize(50 + Below(1200), 50 + Below(900));
}

void Monkey::EndSession() {
    Note("the session ends");
    if (QApplication::activeModalWidget() == nullptr) window_.CommitSession(OneIn(2));
}

QWidget& Monkey::AnyWindow() {
    QWidgetList visible;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->isVisible() && widget->isWindow() && qobject_cast<QFileDialog*>(widget) == nullptr)
            visible += widget;
    return visible.isEmpty() ? window_ : *Any(visible);
}

QPoint Monkey::AnyPlace(const QWidget& widget) {
    return {Below(std::max(1, widget.width())), Below(std::max(1, widget.height()))};
}

QString Monkey::AnyText() {
    static const QStringList texts =
        QString(
            "mvi a,5\n|loop: inr a\n|jmp loop\n|push psw\n|pop b\n|hlt\n|lxi sp,1\n|call loop\n|ret\n|sta 9000\n|"
            "shld ffff\n|; note: x\n|daa\n|foo bar\n|out 7\n|\t|:|A000|fe00|ffff|-1|512|2.5||\u00E9\U0001F600|"
            "; given 9000=00\n|; gives A=05\n|mvi a,b\n|\u00A0nop|\u200Bhlt|;\u2028x\u2029|\U0001F429:\n|\U0001F4D1|"
            "\u05E9\u05DC\u05D5\u05DD|e\u0301|nop\r|\u0085")
            .split('|');
    return Any(texts);
}
