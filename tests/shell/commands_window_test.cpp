#include <QTemporaryDir>
#include <optional>

#include "platform/clipboard.h"
#include "shell/main_window.h"

namespace shell {

namespace {

using execution::CommandState;
using enum execution::CommandState;
using enum execution::Startable;

constexpr auto asWhenIdle = "as when idle";

// What a command does to the window and the machine that CommandsTest sets up, in the words of CommandsTest::EffectOf.
struct CommandRow {
    QString Entry;
    QString Button;  // empty where there is none
    execution::Startable When;
    QString WhenIdle;
    QString InRun = asWhenIdle;                // by an entry that has not followed its button
    std::optional<CommandState> LeadsTo = {};  // where that is not the state before
    QString ButtonAdds = {};
};

const CommandRow commandRows[] = {
    {"mnuNew", "", Always, "[Save?] Program has changed"},
    {"mnuOpen", "", Always, "[Open]"},
    {"mnuSave", "", Always, "title program.asm]"},
    {"mnuSaveAs", "", Always, "[Save As]"},
    {"mnuCut", "", Always, "text mvi a,/hlt|clipboard 5", asWhenIdle, NoProgram},
    {"mnuCopy", "", Always, "clipboard 5"},
    {"mnuPaste", "", Always, "text mvi a,9/hlt", asWhenIdle, NoProgram},
    {"mnuSelectAll", "", Always, "selected mvi a,5/hlt"},
    {"mnuCompile", "cmdCompile", WhenIdle, "A 1, PC 8000, SP fff0, 0 T|registers", "", ProgramAssembled, "|grid"},
    {"mnuRun", "cmdRun", WithProgram,
     "[Velmora] End of code encountered|selected |A 5, PC 8000, SP fff0, 0 T|registers|grid", "", ProgramAssembled},
    {"mnuSlowRun", "cmdSlowRun", WithProgram, "selected |A 5, PC 8002, SP 1000, 112 T|registers|grid", "",
     ProgramAssembled},
    {"mnuSingleStep", "cmdSingleStep", WithProgram, "selected hlt|A 5, PC 8002, SP 1000, 107 T|registers|grid", ""},
    {"mnuHalt", "cmdHalt", DuringRun, "", "stopped"},
    {"mnuReset", "cmdReset", WithProgram, "A 1, PC 8000, SP fff0, 0 T|registers", ""},
    {"mnuCalculator", "", Always, "[Velmora] No calculator could be started"},
    {"mnuDelay", "cmdDelay", WhenIdle, "[Delay] How many milliseconds of delay do you want?"},
    {"mnuCodeAssistant", "cmdCodeAssistant", WhenIdle, "Stop &Code Assistant, frmCA"},
    {"mnuMemoryClear", "cmdClear", Always, "memory|grid", asWhenIdle, NoProgram},
    {"mnuMemoryAdd", "cmdAdd", Always, "[Add Column] Enter starting address"},
    {"mnuMemoryRemove", "cmdRemove", Always, "[Remove Column] Enter a starting address"},
    {"mnuLoadData", "", Always, "[Open]"},
    {"mnuSaveData", "", Always, "window Save To Data File"},
    {"mnuAbout", "", Always, "window Velmora"},
    {"mnuExit", "", Always, "[Save?] Program has changed|exit"},
};

QString OneLine(const QString& text) {
    return QString(text).replace("\r\n", "/");
}

}  // namespace

class CommandsTest : public MainWindowTest {
protected:
    CommandsTest() { qputenv("PATH", ""); }
    ~CommandsTest() override { qputenv("PATH", path); }

    // A program that has a file.
    void StartWithFile() {
        Start();
        QFile::remove(folder.filePath("program.asm"));
        const FileAnswer answer(folder.filePath("program.asm"));
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
    }

    struct Sight {
        QString Title, Text, Selection, Clipboard, Registers, Assistant;
        m8085::MemoryBytes Memory;
        QWidgetList Windows;
        int Exits;
    };

    Sight Look() {
        Sight sight;
        sight.Title = window->windowTitle().section('/', -1);
        sight.Text = OneLine(QString::fromStdU16String(Editor().Text()));
        sight.Selection = OneLine(QString::fromStdU16String(Editor().SelectedText()));
        sight.Clipboard = QString::fromStdU16String(platform::ReadRichText());
        sight.Registers = QString("A %1, PC %2, SP %3, %4 T")
                              .arg(machine->A)
                              .arg(machine->PC, 0, 16)
                              .arg(machine->SP, 0, 16)
                              .arg(machine->TStates);
        sight.Assistant = Button("cmdCodeAssistant").text() + (Find<QWidget>("frmCA").isVisible() ? ", frmCA" : "");
        sight.Memory = machine->Memory;
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->isVisible()) sight.Windows += widget;
        sight.Exits = exits;
        return sight;
    }

    // Everything that a command did, joined by "|": the box that came up, which is cancelled, and what changed.
    QString EffectOf(const std::function<void()>& start) {
        QStringList effect;
        const Sight before = Look();
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
        const Sight after = Look();
        const auto note = [&effect](const QString& word, const QString& old, const QString& now) {
            if (now != old) effect += word + now;
        };
        note("title ", before.Title, after.Title);
        note("text ", before.Text, after.Text);
        if (before.Text == after.Text) note("selected ", before.Selection, after.Selection);
        note("clipboard ", before.Clipboard, after.Clipboard);
        note("", before.Registers, after.Registers);
        if (before.Memory != after.Memory) effect += "memory";
        if (Register("C").toInt(nullptr, 16) == machine->C) effect += "registers";
        if (Cell(0, 3).toInt(nullptr, 16) == machine->Memory[0x9000]) effect += "grid";
        note("", before.Assistant, after.Assistant);
        for (QWidget* opened : after.Windows) {
            if (before.Windows.contains(opened)) continue;
            effect += "window " + opened->windowTitle();
            opened->hide();
        }
        if (after.Exits != before.Exits) effect += "exit";
        return effect.join('|');
    }

    QString EffectOfEntry(const CommandRow& row) {
        auto& entry = Find<QAction>(row.Entry);
        entry.setEnabled(true);
        QString effect = EffectOf([&entry] { entry.trigger(); });
        EXPECT_TRUE(entry.isEnabled()) << "has followed its button";
        return effect;
    }
    QString EffectOfButton(const CommandRow& row) {
        return EffectOf([this, &row] { Click(row.Button); });
    }

    // The effect that a command has inside a run, which is then ended.
    QString EffectInRun(const std::function<QString()>& effectOf) {
        SetUp(ProgramAssembled);
        machine->Memory[0x8002] = 0xC3;  // JMP 8000
        machine->Memory[0x8004] = 0x80;
        QString effect;
        bool hadToBeStopped = false;
        std::optional<MessageAnswer> end;
        QTimer lastStop;
        lastStop.setSingleShot(true);
        lastStop.callOnTimeout([&] {
            hadToBeStopped = true;
            Click("cmdHalt");
        });
        DuringTheRun([&] {
            ExpectState(Running);
            effect = effectOf();
            ExpectState(Running);
            end.emplace();
            lastStop.start(20);
        });
        Click("cmdRun");
        const bool isStopped = !hadToBeStopped && !end->Answered();
        return effect + (isStopped ? "stopped" : "");
    }

    void ExpectState(CommandState state) {
        for (const CommandRow& row : commandRows) {
            const bool canBeUsed = row.Button.isEmpty() || Button(row.Button).isEnabled();
            EXPECT_EQ(canBeUsed, CanStart(row.When, state)) << qPrintable(row.Button);
        }
    }

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
            EXPECT_EQ(EffectOfEntry(row), row.WhenIdle);
            ExpectState(row.LeadsTo.value_or(state));
            if (row.Button.isEmpty()) continue;
            SetUp(state);
            const bool canStart = CanStart(row.When, state);
            EXPECT_EQ(EffectOfButton(row), canStart ? row.WhenIdle + row.ButtonAdds : "");
            ExpectState(canStart ? row.LeadsTo.value_or(state) : state);
        }
    }
}

TEST_F(CommandsTest, ARunLetsInWhatCannotHarmIt) {
    StartWithFile();
    for (const CommandRow& row : commandRows) {
        SCOPED_TRACE(qPrintable(row.Entry));
        const QString expected = row.InRun == asWhenIdle ? row.WhenIdle : row.InRun;
        EXPECT_EQ(EffectInRun([&] { return EffectOfEntry(row); }), expected);
        ExpectState(row.LeadsTo == NoProgram ? NoProgram : ProgramAssembled);
        if (row.Button.isEmpty()) continue;
        EXPECT_EQ(EffectInRun([&] { return EffectOfButton(row); }), CanStart(row.When, Running) ? expected : "");
    }
}

TEST_F(CommandsTest, EntriesFollowTheirButtonsWhenTheirMenuOpens) {
    StartWithFile();
    for (const CommandState state : {NoProgram, ProgramAssembled}) {
        SetUp(state);
        for (QMenu* menu : window->menuBar()->findChildren<QMenu*>()) {
            for (const CommandRow& row : commandRows) Find<QAction>(row.Entry).setEnabled(!CanStart(row.When, state));
            emit menu->aboutToShow();
            for (const CommandRow& row : commandRows) {
                const auto& entry = Find<QAction>(row.Entry);
                const bool follows = !row.Button.isEmpty() && menu->actions().contains(&entry);
                EXPECT_EQ(entry.isEnabled(), CanStart(row.When, state) == follows) << qPrintable(row.Entry);
            }
        }
    }
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
    EXPECT_EQ(row("frmRAM"), "Clear, Add Column, Remove Column");
}

}  // namespace shell
