#include <algorithm>
#include <numeric>
#include <optional>

#include "platform/clipboard.h"
#include "shell/main_window.h"

namespace shell {

namespace {

using execution::CommandState;
using enum execution::CommandState;

constexpr auto asEver = "as ever";

// In which states a button can be pressed: without a program, with one, during a run.
constexpr auto Always = "111", WhenIdle = "110", WithProgram = "010", DuringRun = "001";

// Qt would take this name for a placeholder of its own in the title, but Windows allows no such name.
#ifdef Q_OS_WIN
constexpr auto programName = "[a].asm";
#else
constexpr auto programName = "[*].asm";
#endif

// What a command does to the window and the machine that SetUp makes, in the words of EffectOf.
struct CommandRow {
    QString Entry;
    QString Button;  // empty where there is none
    const char* When;
    QString Effect;
    QString InRun = asEver;
    std::optional<CommandState> LeadsTo = {};  // where that is not the state before
    QString ButtonAdds = {};
};

const CommandRow commandRows[] = {
    {"mnuNew", "", Always, "[Save?] Program has changed"},
    {"mnuOpen", "", Always, "[Open]"},
    {"mnuSave", "", Always, QString("title ") + programName + "]"},
    {"mnuSaveAs", "", Always, "[Save As]"},
    {"mnuCut", "", Always, "text mvi a,/hlt|selected |clipboard 5", asEver, NoProgram},
    {"mnuCopy", "", Always, "clipboard 5"},
    {"mnuPaste", "", Always, "text mvi a,9/hlt|selected ", asEver, NoProgram},
    {"mnuSelectAll", "", Always, "selected mvi a,5/hlt"},
    {"mnuCompile", "cmdCompile", WhenIdle, "A 1, PC 8000, SP FFF0, 0 T|registers", "", ProgramAssembled, "|grid"},
    {"mnuRun", "cmdRun", WithProgram,
     "[Velmora] End of code encountered|selected |A 5, PC 8000, SP FFF0, 0 T|registers|grid", "", ProgramAssembled},
    {"mnuSlowRun", "cmdSlowRun", WithProgram, "selected |A 5, PC 8002, SP 1000, 112 T|registers|grid", "",
     ProgramAssembled},
    {"mnuSingleStep", "cmdSingleStep", WithProgram, "selected hlt|A 5, PC 8002, SP 1000, 107 T|registers|grid", ""},
    {"mnuHalt", "cmdHalt", DuringRun, "", "stopped"},
    {"mnuReset", "cmdReset", WithProgram, "A 1, PC 8000, SP FFF0, 0 T|registers", ""},
    {"mnuCalculator", "", Always, "[Velmora] No calculator could be started"},
    {"mnuDelay", "cmdDelay", WhenIdle, "[Delay] How many milliseconds of delay do you want?"},
    {"mnuCodeAssistant", "cmdCodeAssistant", WhenIdle, "Stop &Code Assistant, frmCA"},
    {"mnuMemoryClear", "cmdClear", Always, "memory of sum 0|grid", asEver, NoProgram},
    {"mnuMemoryAdd", "cmdAdd", Always, "[Add Column] Enter starting address"},
    {"mnuMemoryRemove", "cmdRemove", Always, "[Remove Column] Enter a starting address"},
    {"mnuLoadData", "", Always, "[Open]"},
    {"mnuSaveData", "", Always, "window Save To Data File"},
    {"mnuAbout", "", Always, "window Velmora"},
    {"mnuExit", "", Always, "[Save?] Program has changed|exit"},
};

QString OneLine(const std::u16string& text) {
    return QString::fromStdU16String(text).replace("\r\n", "/");
}

}  // namespace

class CommandsTest : public MainWindowTest {
protected:
    CommandsTest() { qputenv("PATH", ""); }
    ~CommandsTest() override { qputenv("PATH", path); }

    void StartWithFile() {
        Start();
        QFile::remove(folder.filePath(programName));
        const FileAnswer answer(folder.filePath(programName));
        Find<QAction>("mnuSaveAs").trigger();
    }

    // A changed text with a selection; registers and a byte of memory that the window does not show yet.
    void SetUp(CommandState state) {
        const std::u16string program = u"mvi a,5\r\nhlt";
        if (Find<QWidget>("frmCA").isVisible()) Find<QAction>("mnuCodeAssistant").trigger();
        Editor().SetText(program);
        machine->Memory[0x9000] = 1;
        Click("cmdCompile");
        if (state == NoProgram) Editor().SetText(program);
        Editor().SetSelectionStart(6);
        Editor().SetSelectionLength(1);
        platform::PutRichText(u"9");
        machine->Memory[0x9000] = 2;
        machine->A = 1;
        machine->SP = 0x1000;
        machine->TStates = 100;
        ++machine->C;
        exits = 0;
    }

    // What can be seen of the window and the machine, one fact each. The last two say what the window has been
    // refreshed with.
    QStringList Look() {
        QStringList titles;
        for (const QWidget* widget : QApplication::topLevelWidgets())
            if (widget->isVisible() && widget != window) titles += widget->windowTitle();
        const int memorySum = std::accumulate(machine->Memory.begin(), machine->Memory.end(), 0);
        const bool showsAssistant = Find<QWidget>("frmCA").isVisible();
        return {"title " + window->windowHandle()->title().section(QDir::separator(), -1),
                "text " + OneLine(Editor().Text()),
                "selected " + OneLine(Editor().SelectedText()),
                "clipboard " + OneLine(platform::ReadRichText()),
                QString::asprintf("A %X, PC %X, SP %X, %d T", machine->A, machine->PC, machine->SP, machine->TStates),
                "memory of sum " + QString::number(memorySum),
                Button("cmdCodeAssistant").text() + (showsAssistant ? ", frmCA" : ""),
                "window " + titles.join(','),
                exits == 0 ? "" : "exit",
                Register("C").toInt(nullptr, 16) == machine->C ? "registers" : "",
                Cell(0, 3).toInt(nullptr, 16) == machine->Memory[0x9000] ? "grid" : ""};
    }

    // Everything that a command did, joined by "|": the box that came up, which is cancelled, and what changed.
    QString EffectOf(const std::function<void()>& start) {
        QStringList effect;
        const QStringList before = Look();
        {
            const BoxAnswer<QDialog> answer([&effect](QDialog& box) {
                const auto* message = qobject_cast<QMessageBox*>(&box);
                const auto* input = qobject_cast<QInputDialog*>(&box);
                const QString text = message ? message->text() : input ? input->labelText() : QString();
                effect += ('[' + box.windowTitle() + "] " + text.section('.', 0, 0)).trimmed();
                box.close();
            });
            start();
        }
        const QStringList after = Look();
        for (qsizetype fact = 0; fact < after.size(); ++fact)
            if (after[fact] != before[fact]) effect += after[fact];
        for (QWidget* opened : QApplication::topLevelWidgets())
            if (opened != window) opened->hide();
        return effect.join('|');
    }

    // Also of an entry that has not followed its button.
    QString EffectOfEntry(const CommandRow& row) {
        auto& entry = Find<QAction>(row.Entry);
        entry.setEnabled(true);
        QString effect = EffectOf([&entry] { entry.trigger(); });
        EXPECT_TRUE(entry.isEnabled()) << "has followed its button";
        return effect;
    }

    // The effect that a command has inside a run, which is then ended.
    QString EffectInRun(const std::function<QString()>& effectOf) {
        SetUp(ProgramAssembled);
        machine->Memory[0x8002] = 0xC3;  // JMP 8000
        machine->Memory[0x8004] = 0x80;
        QString effect;
        std::optional<MessageAnswer> end;
        QTimer stop;
        bool hadToBeStopped = false;
        DuringTheRun([&] {
            ExpectState(Running);
            effect = effectOf();
            ExpectState(Running);
            end.emplace();
            stop.callOnTimeout([&] { std::exchange(hadToBeStopped, true), Click("cmdHalt"); });
            stop.start(20);
        });
        Click("cmdRun");
        const bool isStopped = !hadToBeStopped && !end->Answered();
        return effect + (isStopped ? "stopped" : "");
    }

    void ExpectState(CommandState state) {
        for (const CommandRow& row : commandRows) {
            const bool canBeUsed = row.Button.isEmpty() || Button(row.Button).isEnabled();
            EXPECT_EQ(canBeUsed, CanStart(row, state)) << qPrintable(row.Button);
        }
        EXPECT_EQ(Find<QAction>("mnuStepBack").isEnabled(), Button("cmdSingleStep").isEnabled());
    }

    static bool CanStart(const CommandRow& row, CommandState state) { return row.When[static_cast<int>(state)] == '1'; }

    const QByteArray path = qgetenv("PATH");
    QTemporaryDir folder;
};

TEST_F(CommandsTest, EveryEntryAndButtonDoesItsCommandAndNothingElse) {
    for (const CommandState state : {NoProgram, ProgramAssembled}) {
        StartWithFile();
        for (const CommandRow& row : commandRows) {
            SCOPED_TRACE(qPrintable(row.Entry));
            SetUp(state);
            ExpectState(state);
            // In a text that is not the one assembled, which an entry may run by its key, no line is selected.
            QString effect = row.Effect;
            if (state == NoProgram && row.When == WithProgram) effect.remove(QRegularExpression("selected [^|]*\\|"));
            EXPECT_EQ(EffectOfEntry(row), effect);
            ExpectState(row.LeadsTo.value_or(state));
            if (row.Button.isEmpty()) continue;
            SetUp(state);
            const bool canStart = CanStart(row, state);
            auto& entry = Find<QAction>(row.Entry);
            entry.setEnabled(!canStart);
            emit qobject_cast<QMenu*>(entry.associatedObjects().constFirst())->aboutToShow();
            EXPECT_EQ(entry.isEnabled(), canStart) << "follows its button when its menu opens";
            EXPECT_EQ(EffectOf([&] { Click(row.Button); }), canStart ? row.Effect + row.ButtonAdds : "");
            ExpectState(canStart ? row.LeadsTo.value_or(state) : state);
        }
    }
}

TEST_F(CommandsTest, ARunLetsInWhatCannotHarmIt) {
    StartWithFile();
    for (const CommandRow& row : commandRows) {
        SCOPED_TRACE(qPrintable(row.Entry));
        const QString expected = row.InRun == asEver ? row.Effect : row.InRun;
        EXPECT_EQ(EffectInRun([&] { return EffectOfEntry(row); }), expected);
        ExpectState(row.LeadsTo == NoProgram ? NoProgram : ProgramAssembled);
        if (row.Button.isEmpty()) continue;
        EXPECT_EQ(EffectInRun([&] { return EffectOf([&] { Click(row.Button); }); }),
                  CanStart(row, Running) ? expected : "");
    }
    const auto pressX = [this] { QTest::keyClick(window->focusWidget(), Qt::Key_X); };
    EXPECT_EQ(EffectInRun([&] { return EffectOf(pressX); }), "");
}

TEST_F(CommandsTest, MenusAndButtonsStandInTheirOrderWithTheirCaptionsAndKeys) {
    Start();
    QStringList menus;
    for (const QAction* top : window->menuBar()->actions()) {
        QStringList entries;
        if (top->menu() != nullptr)
            for (const QAction* entry : top->menu()->actions())
                entries += entry->isSeparator() ? "-" : (entry->text() + ' ' + entry->shortcut().toString()).trimmed();
        menus += top->text() + ": " + entries.join(", ");
    }
    EXPECT_EQ(menus.join('\n'),
              "&File: &New Ctrl+N, -, &Open... Ctrl+O, &Save Ctrl+S, Save &As..., -, Exit\n"
              "&Edit: Cu&t Ctrl+X, &Copy Ctrl+C, &Paste Ctrl+V, -, &Select All Ctrl+A\n"
              "&CPU: &Assemble F4, -, &Run F5, S&low Run F3, &Single Step F8, -, &Stop, &Reset\n"
              "&Tools: C&alculator, &Delay Designer, &Code Assistant\n"
              "&Memory: &Clear, &Add Column, &Remove Column, -, &Load Data File, &Save To Data File...\n"
              "&About: ");

    // A letter that opens a menu presses no button.
    const auto row = [this](const char* parent) {
        auto buttons = Find<QWidget>(parent).findChildren<platform::Button*>(Qt::FindDirectChildrenOnly);
        std::ranges::sort(buttons, {}, [](const QWidget* button) { return button->x(); });
        QStringList captions;
        for (const auto* button : buttons) captions += (button->text() + ' ' + button->shortcut().toString()).trimmed();
        return captions.join(", ");
    };
    EXPECT_EQ(row("client"),
              "&Assemble, &Single Step Alt+S, &Run Alt+R, S&low Run Alt+L, S&top, R&eset, Start &Code Assistant, "
              "&Delay Designer Alt+D");
    for (int click = 0; click < 2; ++click) Click("cmdCodeAssistant");
    EXPECT_EQ(Button("cmdCodeAssistant").shortcut(), QKeySequence()) << "also when it has changed its caption";
    EXPECT_EQ(row("frmRAM"), "Clear, Add Column, Remove Column");
}

}  // namespace shell
