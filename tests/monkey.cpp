// Uses the whole window at random: clicks, keys, menu commands and texts, with runs going on all the while. What it
// looks for are crashes, hangs and what the sanitizers find.
//
//   velmora_monkey EVENTS [SEED]

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <random>

#include "platform/program_text.h"
#include "shell/workbench.h"

namespace {

class Monkey {
public:
    Monkey(int eventCount, unsigned seed) : remaining(eventCount), random(seed) {
        QDir::setCurrent(folder.path());
        workbench.Start();
        window.showNormal();
    }

    void Start() {
        QTimer::singleShot(0, [this] { Tick(); });
    }

private:
    // One event. The next one is due before this one is done with, so that it also comes inside runs and dialogs.
    void Tick() {
        if (remaining-- <= 0) {
            Finish();
            return;
        }
        Start();
        if (QWidget* box = QApplication::activeModalWidget())
            UseBox(*box);
        else
            UseWindow();
    }

    // Ends what is still going on and then the program.
    void Finish() {
        window.findChild<QAbstractButton*>("cmdHalt")->click();
        if (auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget())) box->reject();
        if (QApplication::activeModalWidget() != nullptr || IsRunning())
            Start();
        else
            QApplication::exit();
    }

    bool IsRunning() const { return window.findChild<QAbstractButton*>("cmdHalt")->isEnabled(); }

    void UseWindow() {
        switch (Below(10)) {
            case 0: PressButton(AnyWindow()); break;
            case 1: TriggerAction(); break;
            case 2: TypeProgram(); break;
            case 3: ClickAnywhere(AnyWindow()); break;
            case 4: window.findChild<QAbstractButton*>("cmdCompile")->click(); break;
            case 5:
                if (IsRunning() && Below(3) == 0) window.findChild<QAbstractButton*>("cmdHalt")->click();
                break;
            default: PressKey(QApplication::focusWidget()); break;
        }
    }

    void UseBox(QWidget& box) {
        if (auto* file = qobject_cast<QFileDialog*>(&box)) {
            // Only names inside the monkey's own folder.
            file->findChild<QLineEdit*>("fileNameEdit")->setText(folder.filePath(QString::number(Below(4))));
            if (Below(2) == 0)
                static_cast<QDialog*>(file)->accept();
            else
                file->reject();
        } else if (auto* input = qobject_cast<QInputDialog*>(&box)) {
            input->setTextValue(AnyText());
            input->done(static_cast<int>(Below(2)));
        } else if (Below(3) == 0) {
            static_cast<QDialog&>(box).reject();
        } else {
            PressButton(box);
        }
    }

    QWidget& AnyWindow() {
        QWidgetList visible;
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->isVisible() && widget != &workbench.Splash && widget->inherits("QMenu") == false)
                visible += widget;
        return visible.isEmpty() ? window : *Any(visible);
    }

    void PressButton(QWidget& parent) {
        const auto buttons = parent.findChildren<QAbstractButton*>();
        if (buttons.isEmpty()) return;
        QAbstractButton* button = Any(buttons);
        if (button->isVisible() && button->isEnabled()) QTest::mouseClick(button, Qt::LeftButton);
    }

    // All menu commands but those that start other programs.
    void TriggerAction() {
        const auto actions = window.findChildren<QAction*>();
        QAction* action = Any(actions);
        if (!action->objectName().startsWith("mnu") || action->objectName() == "mnuCalculator") return;
        action->trigger();
    }

    void TypeProgram() {
        auto* editor = window.findChild<platform::ProgramText*>("txtCode");
        if (Below(4) == 0) editor->SetSelectionStart(static_cast<int>(Below(200)));
        if (Below(8) == 0) editor->selectAll();
        editor->ReplaceSelection(AnyText().toStdU16String());
    }

    void ClickAnywhere(QWidget& top) {
        const QPoint at(static_cast<int>(Below(static_cast<std::size_t>(top.width()))),
                        static_cast<int>(Below(static_cast<std::size_t>(top.height()))));
        QWidget* target = top.childAt(at);
        if (target == nullptr || target->inherits("QMenuBar")) return;
        QTest::mouseClick(target, Qt::LeftButton, {}, target->mapFrom(&top, at));
    }

    void PressKey(QWidget* target) {
        static constexpr Qt::Key keys[] = {
            Qt::Key_0,      Qt::Key_3,      Qt::Key_A,        Qt::Key_F,    Qt::Key_G,      Qt::Key_Up,
            Qt::Key_Down,   Qt::Key_Left,   Qt::Key_Right,    Qt::Key_Tab,  Qt::Key_Return, Qt::Key_Backspace,
            Qt::Key_Delete, Qt::Key_Escape, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_F3,     Qt::Key_F4,
            Qt::Key_F5,     Qt::Key_F6,     Qt::Key_F8,       Qt::Key_Space};
        static constexpr Qt::KeyboardModifier modifiers[] = {Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier,
                                                             Qt::ControlModifier};
        if (target == nullptr) target = &window;
        QTest::keyClick(target, Any(keys), Any(modifiers));
    }

    QString AnyText() {
        static const QStringList texts =
            QString::fromUtf8(
                "mvi a,5\n|loop: inr a\n|jmp loop\n|push psw\n|pop b\n|hlt\n|lxi sp,1\n|call loop\n|ret\n|"
                "shld ffff\n|; note: x\n|daa\n|foo bar\n|\t|:|A000|fe00|ffff|-1|512|2.5||\xC3\xA9\xF0\x9F\x98\x80")
                .split('|');
        return Any(texts);
    }

    // One of a list that is not empty.
    template <class List>
    auto Any(const List& list) -> decltype(list[0]) {
        using Index = decltype(std::size(list));
        return list[static_cast<Index>(Below(static_cast<std::size_t>(std::size(list))))];
    }

    std::size_t Below(std::size_t limit) { return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random); }

    int remaining;
    std::mt19937 random;
    QTemporaryDir folder;
    shell::Workbench workbench{[] {}};
    shell::frmMain& window = workbench.Window;
};

}  // namespace

int main(int argc, char** argv) {
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    shell::Prepare(application);

    const int events = argc > 1 ? QByteArray(argv[1]).toInt() : 3000;
    const unsigned seed = argc > 2 ? QByteArray(argv[2]).toUInt() : std::random_device()();
    std::printf("%d events from seed %u\n", events, seed);
    std::fflush(stdout);
    Monkey monkey(events, seed);
    monkey.Start();
    QApplication::exec();
    std::puts("All events done.");
    return 0;
}
