#include "shell/frm_main.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QTableView>
#include <QTest>
#include <memory>

#include "platform/modal.h"
#include "platform/program_text.h"

namespace shell {

namespace {

struct Store : QSettings {
    Store() : QSettings(QSettings::NativeFormat, QSettings::UserScope, "Velmora", "Velmora") {}
};

void StoreSetting(const QString& key, const QString& value) {
    Store().setValue("meminfo/" + key, value);
}

}  // namespace

// The whole window with a machine of its own. The exit sequence ends in a count instead of the end of the process.
class FrmMainTest : public testing::Test {
protected:
    FrmMainTest() { Store().clear(); }

    void Start() {
        window.reset();
        machine = std::make_unique<m8085::MachineState>();
        codeMap = std::make_unique<m8085::CodeMap>();
        window = std::make_unique<frmMain>(
            *machine, *codeMap, [this] { ++abouts; }, [this] { ++exits; });
        window->resize(900, 640);
        window->show();
        window->activateWindow();
        QCoreApplication::processEvents();
    }

    template <class Control>
    Control& Find(const QString& name) {
        auto* control = window->findChild<Control*>(name);
        if (control == nullptr) throw std::runtime_error("no control " + name.toStdString());
        return *control;
    }

    platform::ProgramText& Editor() { return Find<platform::ProgramText>("txtCode"); }
    QPushButton& Button(const QString& name) { return Find<QPushButton>(name); }
    void Click(const QString& name) { QTest::mouseClick(&Button(name), Qt::LeftButton); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    // The enabled run commands, by a letter each: Assemble, Run, Slow Run, sTep, rEset, Halt.
    QString Enabled() {
        return Letters([this](const char* command) { return Button(QString("cmd") + command).isEnabled(); });
    }

    // The same of the entries of the CPU menu.
    QString EnabledEntries() {
        return Letters([this](const char* command) { return Find<QAction>(QString("mnu") + command).isEnabled(); });
    }

    static QString Letters(const std::function<bool(const char* command)>& isEnabled) {
        QString letters;
        for (const auto& [letter, command] : {std::pair{'A', "Compile"},
                                              {'R', "Run"},
                                              {'S', "SlowRun"},
                                              {'T', "SingleStep"},
                                              {'E', "Reset"},
                                              {'H', "Halt"}})
            if (isEnabled(command)) letters += letter;
        return letters;
    }

    void Open(const QString& menu) { emit Find<QMenu>(menu).aboutToShow(); }

    QString Register(const QString& name) { return Find<QLineEdit>("txt" + name).text(); }

    // Calls back once, from inside the next run.
    static void DuringTheRun(std::function<void()> action) { QTimer::singleShot(0, std::move(action)); }

    std::unique_ptr<m8085::MachineState> machine;
    std::unique_ptr<m8085::CodeMap> codeMap;
    std::unique_ptr<frmMain> window;
    int abouts = 0;
    int exits = 0;
};

TEST_F(FrmMainTest, AProgramIsTypedAssembledAndRunByKeyboardAlone) {
    Start();
    ASSERT_EQ(QApplication::focusWidget(), &Editor());
    QTest::keyClicks(&Editor(), "mvi a,5\rhlt");
    Press(Qt::Key_F4);
    EXPECT_EQ(Enabled(), "ARSTE");
    MessageAnswer end(QMessageBox::Ok);
    Press(Qt::Key_F5);
    EXPECT_EQ(end.Text, "End of code encountered. The program would take 3.9 microsec on 8085 (12 T-States)");
    EXPECT_EQ(end.Caption, "Velmora");
    EXPECT_EQ(Register("A"), "05");
    EXPECT_EQ(Register("PC"), "8000");
    EXPECT_EQ(Register("Tstates"), "0");
    QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
    EXPECT_EQ(Editor().Text(), u"mvi a,5\r\nhlt\t");
    EXPECT_EQ(window->focusWidget(), &Editor());
    EXPECT_EQ(Enabled(), "A");
}

TEST_F(FrmMainTest, AFailedAssemblySelectsItsLineAndKeepsTheRunCommandsOff) {
    Start();
    Editor().SetText(u"start: nop\r\na:foo\r\nhlt");
    auto& box = Find<QLineEdit>("txtB");
    box.setFocus();
    box.selectAll();
    QTest::keyClicks(&box, "77");
    MessageAnswer error(QMessageBox::Ok);
    Press(Qt::Key_F4);
    EXPECT_EQ(error.Text, "Bad opcode - FOO");
    EXPECT_EQ(error.Caption, "Error");
    EXPECT_EQ(Editor().Text(), u"start: \r\nnop\r\na:\r\nfoo\r\nhlt");
    EXPECT_EQ(Editor().SelectedText(), u"foo");
    EXPECT_EQ(window->focusWidget(), &Editor());
    EXPECT_EQ(Enabled(), "A");
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([this] { return machine->B == 0x77; })) << "the box lost the focus to the editor";
}

TEST_F(FrmMainTest, AssemblingSavesTheCellUnderTheEditorAndTheMenuLeavesTheGridAsItIs) {
    Start();
    Editor().SetText(u"mvi a,5");
    auto& grid = Find<QTableView>("grdRAM");
    grid.setCurrentIndex(grid.model()->index(0, 1));
    QTest::keyClicks(QApplication::focusWidget(), "7f");
    Press(Qt::Key_F4);
    EXPECT_EQ(machine->Memory[0x8000], 0x3E);
    EXPECT_EQ(grid.model()->index(1, 1).data().toString(), "00");
    Click("cmdCompile");
    EXPECT_EQ(grid.model()->index(1, 1).data().toString(), "05");
    grid.setCurrentIndex(grid.model()->index(1, 1));
    EXPECT_EQ(machine->Memory[0x8000], 0x3E) << "the editor must not write an old byte back";
}

TEST_F(FrmMainTest, AMenuDoesNotTakeABoxItsFocusButTheEditorAfterItDoes) {
    Start();
    auto& box = Find<QLineEdit>("txtB");
    box.setFocus();
    box.selectAll();
    QTest::keyClicks(&box, "5");
    window->menuBar()->setFocus(Qt::MenuBarFocusReason);
    EXPECT_EQ(machine->B, 0);
    Editor().setFocus();
    EXPECT_EQ(machine->B, 5);
}

TEST_F(FrmMainTest, ATextThatIsTooLongIsRefusedUntouched) {
    Start();
    Editor().SetText(std::u16string(32'765, u' ') + u":");
    const std::u16string before = Editor().Text();
    MessageAnswer error(QMessageBox::Ok);
    Click("cmdCompile");
    EXPECT_TRUE(error.Text.contains("32766"));
    EXPECT_EQ(Editor().Text(), before);
}

TEST_F(FrmMainTest, StepsShowTheNextLineAndTheEndTakesTwoPresses) {
    Start();
    Editor().SetText(u"mvi a,5\r\nhlt");
    Click("cmdCompile");
    Click("cmdSingleStep");
    EXPECT_EQ(Editor().SelectedText(), u"hlt");
    EXPECT_EQ(Register("A"), "05");
    Click("cmdSingleStep");
    EXPECT_EQ(Editor().SelectedText(), u"hlt");
    MessageAnswer end(QMessageBox::Ok);
    Click("cmdSingleStep");
    EXPECT_TRUE(end.Text.contains("3.96 microsec on 8085 (12 T-States)"));
    EXPECT_EQ(Editor().SelectedText(), u"");
}

TEST_F(FrmMainTest, AnEndlessRunStopsAndNothingElseStartsMeanwhile) {
    Start();
    Editor().SetText(u"loop:\r\ninr a\r\njmp loop");
    Click("cmdCompile");
    QString during;
    DuringTheRun([&] {
        during = Enabled();
        Press(Qt::Key_F4);
        Press(Qt::Key_F5);
        Press(Qt::Key_F8);
        Editor().setFocus();
        Press(Qt::Key_F6);
        EXPECT_TRUE(Button("cmdHalt").hasFocus()) << "the way out of the editor by keyboard";
        Press(Qt::Key_Space);
    });
    Click("cmdRun");
    EXPECT_EQ(during, "H");
    EXPECT_EQ(Enabled(), "ARSTE");
    EXPECT_NE(machine->TStates, 0);
    EXPECT_EQ(Register("Tstates"), QString::number(machine->TStates));
}

TEST_F(FrmMainTest, AfterARunAndItsMessageTheFocusIsOnRun) {
    Start();
    Editor().SetText(u"nop");
    Click("cmdCompile");
    MessageAnswer end(QMessageBox::Ok);
    Click("cmdRun");
    EXPECT_EQ(window->focusWidget(), &Button("cmdRun"));
}

TEST_F(FrmMainTest, AnEditDuringASlowRunKeepsStopAliveAndLosesTheProgram) {
    Start();
    Editor().SetText(u"loop:\r\ninr a\r\njmp loop");
    Click("cmdCompile");
    QString during;
    DuringTheRun([&] {
        Editor().ReplaceSelection(u";");
        during = Enabled();
        Click("cmdHalt");
    });
    Click("cmdSlowRun");
    EXPECT_EQ(during, "H");
    EXPECT_EQ(Enabled(), "A");
}

TEST_F(FrmMainTest, ARefusedInstructionIsToldAndShown) {
    Start();
    Editor().SetText(u"lxi sp,1\r\npush b\r\nhlt");
    Click("cmdCompile");
    MessageAnswer refusal(QMessageBox::Ok);
    Click("cmdRun");
    EXPECT_TRUE(refusal.Text.contains("8003") && refusal.Text.contains("0001")) << refusal.Text.toStdString();
    EXPECT_EQ(Editor().SelectedText(), u"push b");
    EXPECT_EQ(Register("PC"), "8003");
    EXPECT_EQ(Enabled(), "ARSTE");
}

TEST_F(FrmMainTest, MenuEntriesFollowTheirButtonsOnlyWhenTheMenuOpens) {
    Start();
    EXPECT_EQ(EnabledEntries(), "ARSTEH");
    Editor().setFocus();
    {
        MessageAnswer end(QMessageBox::Ok);
        Press(Qt::Key_F5);
        EXPECT_TRUE(end.Text.contains("1.3 microsec on 8085 (4 T-States)"));
    }
    EXPECT_EQ(Enabled(), "ARSTE");
    Editor().ReplaceSelection(u"nop");
    Open("mnuCPU");
    EXPECT_EQ(EnabledEntries(), "A");
    Click("cmdCompile");
    EXPECT_EQ(EnabledEntries(), "A");
    Open("mnuCPU");
    EXPECT_EQ(EnabledEntries(), "ARSTE");
}

TEST_F(FrmMainTest, TheEditKeysActOnTheProgramWhereverTheFocusIs) {
    Start();
    Editor().SetText(u"hlt");
    auto& box = Find<QLineEdit>("txtB");
    box.setFocus();
    box.selectAll();
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "hlt");
    Press(Qt::Key_X, Qt::ControlModifier);
    Press(Qt::Key_V, Qt::ControlModifier);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Editor().Text(), u"hlthlt");
    EXPECT_EQ(box.text(), "00");
}

TEST_F(FrmMainTest, AnAccessKeyMovesTheFocusAndLettersOfMenusPressNoButton) {
    Start();
    Editor().SetText(u"nop");
    Click("cmdCompile");
    auto& box = Find<QLineEdit>("txtB");
    box.setFocus();
    box.selectAll();
    QTest::keyClicks(&box, "7");
    Press(Qt::Key_S, Qt::AltModifier);
    EXPECT_EQ(machine->B, 7);
    EXPECT_TRUE(QTest::qWaitFor([this] { return machine->TStates == 4; }));
    EXPECT_TRUE(Button("cmdCompile").shortcut().isEmpty());
    EXPECT_FALSE(Button("cmdRun").shortcut().isEmpty());
    Click("cmdCodeAssistant");
    EXPECT_TRUE(Button("cmdCodeAssistant").shortcut().isEmpty());
}

TEST_F(FrmMainTest, ExitStoresTheColumnsAndTheNextStartShowsThem) {
    Start();
    EXPECT_EQ(window->windowTitle(), "Velmora - [Untitled]");
    {
        ModalAnswer answer([](QWidget& box) {
            auto& input = dynamic_cast<QInputDialog&>(box);
            input.setTextValue("fe00");
            input.accept();
        });
        Click("cmdAdd");
    }
    window->close();
    EXPECT_EQ(exits, 1);
    EXPECT_EQ(Store().value("meminfo/colcount").toString(), "4");
    EXPECT_EQ(Store().value("meminfo/3").toString(), "fe00");
    Start();
    EXPECT_EQ(Find<QAbstractItemView>("grdRAM").model()->columnCount(), 10);
}

TEST_F(FrmMainTest, ADamagedStoreNeverStopsTheStart) {
    StoreSetting("colcount", "-7");
    Start();
    EXPECT_EQ(Find<QAbstractItemView>("grdRAM").model()->columnCount(), 8);
    StoreSetting("colcount", "5");
    StoreSetting("0", "rubbish");
    StoreSetting("3", "ff00");
    StoreSetting("4", "A000");
    Start();
    EXPECT_EQ(Find<QAbstractItemView>("grdRAM").model()->columnCount(), 10);
}

TEST_F(FrmMainTest, CancelInTheQuestionDoesNotStopTheExit) {
    Start();
    QTest::keyClicks(&Editor(), "hlt");
    MessageAnswer cancel(QMessageBox::Cancel);
    window->close();
    EXPECT_TRUE(cancel.Answered());
    EXPECT_EQ(exits, 1);
}

TEST_F(FrmMainTest, ExitWorksFromInsideARunAndWhileItsOwnQuestionIsOpen) {
    Start();
    Editor().SetText(u"loop:\r\njmp loop");
    Click("cmdCompile");
    DuringTheRun([&] {
        ModalAnswer question([&](QWidget& box) {
            window->mnuExit_Click();
            EXPECT_EQ(exits, 1);
            box.close();
        });
        window->close();
        EXPECT_EQ(exits, 2);
        Click("cmdHalt");
    });
    Click("cmdRun");
    EXPECT_EQ(exits, 2);
    EXPECT_EQ(Store().value("meminfo/colcount").toString(), "3");
}

TEST_F(FrmMainTest, TheCodeAssistantTakesThePlaceOfTheMemoryPanel) {
    Start();
    Click("cmdCodeAssistant");
    EXPECT_FALSE(Find<QWidget>("frmRAM").isVisible());
    EXPECT_TRUE(Find<QWidget>("frmCA").isVisible());
    Find<QAction>("mnuCodeAssistant").trigger();
    EXPECT_TRUE(Find<QWidget>("frmRAM").isVisible());
    EXPECT_EQ(Button("cmdCodeAssistant").text(), "Start &Code Assistant");
}

TEST_F(FrmMainTest, EveryControlHasANameForThoseWhoCannotSeeIt) {
    Start();
    for (const QWidget* control : window->findChildren<QWidget*>()) {
        if (control->focusPolicy() == Qt::NoFocus || control->objectName().startsWith("qt_")) continue;
        EXPECT_FALSE(control->accessibleName().isEmpty()) << control->objectName().toStdString();
    }
}

}  // namespace shell
