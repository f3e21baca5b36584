#include "shell/frm_main.h"

#include <thread>

#include "platform/clipboard.h"
#include "platform/palette.h"
#include "shell/main_window.h"

namespace shell {

using execution::CommandState;

class FrmMainTest : public MainWindowTest {
protected:
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    void TypeIntoB(const QString& digits) {
        auto& box = Find<QLineEdit>("txtB");
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, digits);
    }
    void AddColumn(const char* start) {
        const InputAnswer address(start);
        Find<QAction>("mnuMemoryAdd").trigger();
        Activate(*window);
    }
    void EditCell(int row, int column) { Find<QTableView>("grdRAM").setCurrentIndex(Cells().index(row, column)); }
};

TEST_F(FrmMainTest, AtTheStartTheEditorHasTheFocusAndFilesAreLookedForBesideTheProgram) {
    Start();
    EXPECT_EQ(window->windowTitle() + Register("A") + Register("PC"), "Velmora - [Untitled]000000");
    EXPECT_EQ(State(), CommandState::NoProgram);
    QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
    EXPECT_EQ(Editor().Text(), u"\t");
    EXPECT_EQ(window->focusWidget(), &Editor());
    const FileAnswer cancel({});
    Find<QAction>("mnuOpen").trigger();
    EXPECT_EQ(cancel.Offered, QCoreApplication::applicationDirPath());
}

TEST_F(FrmMainTest, AFailedAssemblyShowsItsLineAndKeepsWhatWasTypedIntoABox) {
    Start();
    Editor().SetText(u"start: nop\r\na:foo\r\nhlt");
    TypeIntoB("77");
    MessageAnswer error(QMessageBox::Ok, [this] {
        EXPECT_EQ(Editor().SelectedText(), u"foo");
        EXPECT_EQ(State(), CommandState::NoProgram);
    });
    Press(Qt::Key_F4);
    EXPECT_EQ(Editor().accessibleDescription(), "Line 4: if FOO is a label, it needs a colon: FOO:");
    EXPECT_EQ(error.Caption, "Error");
    EXPECT_EQ(error.Text, "Bad opcode - FOO");
    EXPECT_EQ(Editor().Text(), u"start: \r\nnop\r\na:\r\nfoo\r\nhlt");
    EXPECT_EQ(window->focusWidget(), &Editor());
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([this] { return machine->B == 0x77; }));
}

TEST_F(FrmMainTest, TheReasonStandsAtTheLineOfTheFaultUntilTheNextText) {
    Start();
    const std::u16string program = u"mvi a,5\r\nadi 3 ; note: three\r\n" + std::u16string(99, u'\n') + u"toolong a";
    const std::function<void()> ends[] = {[this] { Find<QAction>("mnuNew").trigger(); },
                                          [this] {
                                              Editor().SetText(u"hlt");
                                              Click("cmdCompile");
                                          }};
    for (const auto& end : ends) {
        Editor().SetText(program);
        const MessageAnswer error;
        Click("cmdCompile");
        EXPECT_EQ(Editor().accessibleDescription(), "Line 3: a colon in a comment breaks the line there: leave it out");
        Editor().SetText(QString::fromStdU16String(program).remove(':').toStdU16String());
        const MessageAnswer noLine;
        Click("cmdCompile");
        EXPECT_TRUE(Editor().accessibleDescription().startsWith("Line 102: "));
        EXPECT_GT(Editor().verticalScrollBar()->value(), 50) << "the message names no line, but the reason is in view";
        const MessageAnswer save(QMessageBox::No);
        end();
        EXPECT_EQ(Editor().accessibleDescription(), "");
    }
    StartWith(u"l: lda a,2050h\r\nmvi a,10 ; so: hlt\r\nl: adi 0AH\r\n; gives CY=1");
    const QString hints =
        "Line 2: LDA takes one operand: 2050H is lost; A is the number 000A here, not the register; "
        "Line 3: 10 is hexadecimal too, though line 6 has 0AH; "
        "Line 4: the colon in the comment ends it: HLT is part of the program; "
        "Line 5: the label L is defined in line 1 already, and jumps and calls go there";
    for (const char* const verdict : {"", "; Line 7: CY is 0", "; Line 7: CY is 0"}) {
        EXPECT_EQ(Editor().accessibleDescription(), hints + verdict);
        const MessageAnswer end;
        Click("cmdRun");
    }
}

TEST_F(FrmMainTest, TheTooltipsOfTheEditorAreAboutTheCharacterUnderTheMouse) {
    StartWith(u"first:\r\nmvi a,5\r\njmp first");
    // Right of the left edge of a character, in pixels.
    const auto tipAt = [this](int line, int column, int pixels) {
        QTextCursor caret(Editor().document()->findBlockByNumber(line - 1));
        caret.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, column);
        const QPoint place = Editor().cursorRect(caret).center() + QPoint(pixels, 0);
        QHelpEvent rest(QEvent::ToolTip, place, Editor().viewport()->mapToGlobal(place));
        QApplication::sendEvent(Editor().viewport(), &rest);
        return QToolTip::text();
    };
    const auto isHidden = [] { return QTest::qWaitFor([] { return !QToolTip::isVisible(); }); };
    const QString label = "FIRST is 8000, defined in line 1";
    const QPoint stood = window->pos();
    for (const int pixels : {2, 7}) {
        EXPECT_EQ(tipAt(3, 4, pixels), label);
        EXPECT_EQ(tipAt(3, 8, pixels), label);
        EXPECT_EQ(tipAt(3, 3, pixels), "8002: C3 00 80");
    }
    EXPECT_EQ(window->pos(), stood);
    EXPECT_EQ(tipAt(2, 7, 90), "8000: 3E 05");
    QHelpEvent below(QEvent::ToolTip, {20, 300}, Editor().viewport()->mapToGlobal(QPoint(20, 300)));
    QApplication::sendEvent(Editor().viewport(), &below);
    EXPECT_TRUE(isHidden()) << "there is no text";
    Click("cmdClear");
    tipAt(3, 4, 2);
    EXPECT_TRUE(isHidden()) << "the program is not in memory any more";
    Click("cmdCompile");
    EXPECT_EQ(tipAt(3, 4, 2), label);
    QTest::keyClick(&Editor(), Qt::Key_Space);
    EXPECT_TRUE(isHidden());
    tipAt(3, 4, 2);
    EXPECT_FALSE(QToolTip::isVisible()) << "the text is not what was assembled";
    EXPECT_EQ(tipAt(3, 0, 2).section(' ', 0, 0), "Jumps");
}

TEST_F(FrmMainTest, ARunSaysBesideTheCommentsWhetherTheyHeld) {
    const QTemporaryDir folder;
    Write(folder.filePath("list.dat"), "9000: 5 6");
    Write(folder.filePath("sum.asm"),
          "lda 9000\nmov b,a\nlda 9001\nadd b ; \xC3\xA4\nhlt\n; given list.dat\n; gives A=0B\n" +
              QByteArray(99, '\n') + "; gives 40 T-states");
    Start();
    window->Open(folder.filePath("sum.asm"));
    Click("cmdCompile");
    const auto shows = [this](const QColor& ground) {
        const QImage picture = Editor().viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
        const auto* pixels = reinterpret_cast<const QRgb*>(picture.constBits());
        return std::find(pixels, pixels + picture.width() * picture.height(), ground.rgb()) !=
               pixels + picture.width() * picture.height();
    };
    const std::pair<int, const char*> runs[] = {
        {0, "Line 6: 9000 was 00, so not tried"},
        {5, "Line 6: 9001 was 00, so not tried"},
        {6, "Line 6: held; Line 7: held; Line 107: 39 T-states"},
    };
    for (const auto& [byte, told] : runs) {
        if (byte > 0) machine->Memory[byte == 5 ? 0x9000 : 0x9001] = std::uint8_t(byte);
        EXPECT_EQ(Editor().verticalScrollBar()->value(), 0);
        const MessageAnswer end;
        Click("cmdRun");
        EXPECT_TRUE(end.Answered());
        EXPECT_EQ(Editor().accessibleDescription(), told);
        EXPECT_EQ(shows(platform::NeutralNoteGround), byte != 6);
    }
    EXPECT_GT(Editor().verticalScrollBar()->value(), 50) << "what did not hold is in view";
    EXPECT_TRUE(shows(platform::BadNoteGround));
    Editor().verticalScrollBar()->setValue(0);
    EXPECT_TRUE(shows(platform::GoodNoteGround));
    machine->Memory[0x9000] = 4;
    Click("cmdSlowRun");
    EXPECT_EQ(Editor().accessibleDescription(), "Line 6: 9000 was 04, so not tried");
    Editor().SetSelectionStart(0);
    QTest::keyClick(&Editor(), Qt::Key_Return);
    EXPECT_EQ(Editor().accessibleDescription(), "Line 7: 9000 was 04, so not tried");
    Click("cmdCompile");
    EXPECT_EQ(Editor().accessibleDescription(), "");
}

TEST_F(FrmMainTest, AssemblingOverTheCellEditorKeepsTheProgramAndTheMenuLeavesTheGrid) {
    Start();
    Editor().SetText(u"mvi a,5");
    EditCell(0, 1);
    QTest::keyClicks(QApplication::focusWidget(), "7f");
    Press(Qt::Key_F4);
    EXPECT_EQ(machine->Memory[0x8000], 0x3E);
    EXPECT_EQ(Find<QLineEdit>("txtEdit").text(), "3E");
    EXPECT_EQ(Cell(1, 1), "00");
    Click("cmdCompile");
    EXPECT_EQ(Cell(1, 1), "05");
    EditCell(1, 1);
    EXPECT_EQ(machine->Memory[0x8000], 0x3E);
}

TEST_F(FrmMainTest, ANewTextBringsTheAssistantBackToItsMnemonicsAndItsEndTheFocusToTheEditor) {
    Start();
    auto& entry = Find<QAction>("mnuCodeAssistant");
    entry.trigger();
    Click("cmdCodes2");  // LDA, which asks for digits
    const MessageAnswer save(QMessageBox::No);
    Find<QAction>("mnuNew").trigger();
    EXPECT_TRUE(Button("cmdCodes2").isVisible());
    Button("cmdCodes5").setFocus();
    entry.trigger();
    EXPECT_EQ(window->focusWidget(), &Editor());
}

TEST_F(FrmMainTest, ATextThatIsTooLongIsRefusedUntouched) {
    Start();
    const std::u16string text = std::u16string(32'764, u' ') + u":";
    Editor().SetText(text);
    const MessageAnswer end;
    Press(Qt::Key_F5);
    EXPECT_EQ(State(), CommandState::ProgramAssembled) << "what is in memory can be run";
    const MessageAnswer error(QMessageBox::Ok, [this] { EXPECT_EQ(State(), CommandState::NoProgram); });
    Click("cmdCompile");
    EXPECT_TRUE(error.Text.contains("32767"));
    EXPECT_EQ(Editor().Text(), text);
}

TEST_F(FrmMainTest, WhatIsClosedLeavesTheWindowAsItWasAndOpensAgainAsTheFirstTime) {
    Start();
    Editor().SetText(u"nop");
    const QTemporaryDir folder;
    const std::pair<const char*, std::function<void()>> uses[] = {
        {"mnuCodeAssistant",
         [this] {
             Click("cmdCodes2");  // LDA, which asks for digits
             Editor().undo();
             Find<QAction>("mnuCodeAssistant").trigger();
         }},
        {"mnuSaveData",
         [&] {
             for (const char* box : {"Text1", "Text2"}) Find<QLineEdit>(box).setText("8000");
             Click("Command1");
             const FileAnswer file(folder.filePath("bytes.dat"));
             const MessageAnswer replace(QMessageBox::Yes);
             Click("Command4");
             EXPECT_NE(file.Offered, folder.filePath("bytes.dat"));
             Find<QListWidget>("List1").setCurrentRow(0);
             Click("OKButton");
         }},
        {"mnuAbout",
         [&] {
             Activate(*window);  // the box stays above it
             Find<QAction>("mnuAbout").trigger();
             EXPECT_TRUE(QTest::qWaitForWindowActive(&workbench->Splash));
             QTest::keyClick(&workbench->Splash, 'x');
             QTest::simulateEvent(&Editor(), true, Qt::Key_X, Qt::NoModifier, "x", true);  // it was held
         }},
    };
    for (const auto& [entry, useAndClose] : uses) {
        SCOPED_TRACE(entry);
        const QStringList before = Seen();
        QStringList opened;
        for (int time = 0; time < 2; ++time) {
            Find<QAction>(entry).trigger();
            if (time == 0) opened = Seen();
            EXPECT_EQ(Seen(), opened);
            useAndClose();
            Activate(*window);
            EXPECT_EQ(Seen(), before);
        }
    }
}

TEST_F(FrmMainTest, TabRunsThroughTheControlsInTheOrderInWhichTheyAreRead) {
    StartWith(u"nop");
    const auto order = [this] {
        QStringList names;
        Button("cmdCompile").setFocus();
        for (; window->focusWidget() != &Editor() && names.size() < 200; Press(Qt::Key_Tab))
            names += window->focusWidget()->objectName();
        return names.join(' ');
    };
    EXPECT_EQ(order(),
              "cmdCompile cmdSingleStep cmdRun cmdSlowRun cmdReset cmdCodeAssistant cmdDelay txtA txtF txtB txtC "
              "txtD txtE txtH txtL txtPC txtSP txtSf txtZf txtUndef1 txtACf txtUndef2 txtPf txtUndef3 txtCyf "
              "txtTstates cmdClear cmdAdd cmdRemove grdRAM");
    Click("cmdCodeAssistant");
    EXPECT_TRUE(order().contains(" cmdCodeAssistant cmdCodes2 cmdCodes3 "));
    EXPECT_TRUE(order().endsWith(" cmdCodes1 cmdDelay"));
}

TEST_F(FrmMainTest, EveryControlStandsFreeInsideItsPanelAndHasANameForThoseWhoCannotSeeIt) {
    Start();
    Find<QAction>("mnuSaveData").trigger();
    workbench->Splash.show();
    for (const char* name : {"cmdRun", "grdRAM", "Text1"}) EXPECT_TRUE(Find<QWidget>(name).font().bold()) << name;
    for (const char* name : {"txtEdit", "cmdCodes1", "cmdCodes2"})
        EXPECT_FALSE(Find<QWidget>(name).font().bold()) << name;
    EXPECT_EQ(QApplication::font().pixelSize(), 12);
    EXPECT_TRUE(Button("cmdSingleStep").toolTip().endsWith(" (F8)"));
    EXPECT_EQ(Find<QWidget>("frmSave").maximumSize(), QSize(408, 340));
    EXPECT_EQ(Find<QLabel>("lblCaption0").text(), "Data transfer instructions:");
    const QImage caption = Find<QGroupBox>("frmRegs").grab().toImage();
    EXPECT_EQ(caption.pixelColor(9, 7), window->palette().window().color()) << "no line through it";
    EXPECT_EQ(QApplication::palette().color(QPalette::Disabled, QPalette::Base), QColor(240, 240, 240));
    QWidgetList panels{&workbench->Splash};
    for (const char* name : {"client", "frmRegs", "frmRAM", "frmCA", "frmCA2", "frmCA3", "frmSave", "Frame1"})
        panels += &Find<QWidget>(name);
    for (const QWidget* panel : panels) {
        QWidgetList controls = panel->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
        controls.removeIf(
            [](const auto* each) { return each->isHidden() && each->testAttribute(Qt::WA_WState_ExplicitShowHide); });
        EXPECT_GE(controls.size(), 4) << qPrintable(panel->objectName());
        for (const QWidget* control : controls) {
            EXPECT_TRUE(panel->rect().contains(control->geometry()) && !control->pos().isNull())
                << qPrintable(control->objectName());
            const bool isNamed = !control->accessibleName().isEmpty() || control->focusPolicy() == Qt::NoFocus;
            EXPECT_TRUE(isNamed) << qPrintable(control->objectName());
            // Keys side by side share an edge, and the large letters of the About box reach over their place.
            const QRect inner = control->geometry().adjusted(1, 1, -1, -1);
            for (const QWidget* other : controls)
                EXPECT_TRUE(other == control || panel == &workbench->Splash || !other->geometry().intersects(inner))
                    << qPrintable(control->objectName() + " and " + other->objectName());
        }
    }
}

TEST_F(FrmMainTest, ALineIsMarkedByKeyOrMenuAndRunsStopThereUntilNew) {
    StartWith(u"nop\r\nfirst: nop\r\nnop");
    auto& menuEntry = Find<QAction>("mnuStopHere");
    const auto openMenuAtLine = [&](int line, QContextMenuEvent::Reason by = QContextMenuEvent::Mouse) {
        const QPoint place(40, 17 * line - 5);
        QContextMenuEvent open(by, place, Editor().viewport()->mapToGlobal(place));
        QApplication::sendEvent(Editor().viewport(), &open);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        EXPECT_TRUE(menu->actions().contains(&menuEntry) && menu->actions().contains(&Find<QAction>("mnuConvert")));
        const auto first = menu->actions().indexOf(Editor().actions().front());
        EXPECT_TRUE(first > 0 && menu->actions().at(first - 1)->isSeparator());
        menu->close();
        QApplication::processEvents();
        Activate(*window);
        return menuEntry.isChecked();
    };
    EXPECT_FALSE(openMenuAtLine(2));
    menuEntry.trigger();
    TypeIntoB("0");
    EXPECT_TRUE(openMenuAtLine(2));
    EXPECT_TRUE(openMenuAtLine(1, QContextMenuEvent::Keyboard)) << "it is about the line of the caret";
    Press(Qt::Key_F5);
    EXPECT_EQ(Editor().SelectedText(), u"nop");
    EXPECT_EQ(machine->PC, 0x8001);
    EXPECT_FALSE(openMenuAtLine(1));
    Editor().SetSelectionStart(0);
    Editor().ReplaceSelection(u"nop\r\n");
    Editor().SetSelectionStart(Editor().Length());
    Press(Qt::Key_F9);
    Click("cmdCompile");
    for (const int stop : {0x8002, 0x8003}) {
        Click("cmdSlowRun");
        EXPECT_EQ(machine->PC, stop);
    }
    const MessageAnswer save(QMessageBox::No);
    Find<QAction>("mnuNew").trigger();
    Editor().SetText(u"nop\r\nnop\r\nnop\r\nnop\r\nnop");
    Click("cmdCompile");
    const MessageAnswer end;
    Click("cmdRun");
    EXPECT_TRUE(end.Text.contains("20 T-States")) << qPrintable(end.Text);
}

TEST_F(FrmMainTest, TheListingIsThatOfTheLatestAssemblyAsItWas) {
    auto copyListing = [this] {
        platform::PutRichText(u"");
        emit Editor().MenuOpening();
        Find<QAction>("mnuCopyListing").trigger();
        return platform::ReadRichText();
    };
    StartWith(u"b: mvi a,5 ; \u00E4\r\nhlt");
    machine->Memory[0x8000] = 0;
    Editor().ReplaceSelection(u"x");
    EXPECT_EQ(copyListing(),
              u"                    1  b:\r\n8000  3E 05         2  mvi a,5 ; \u00E4\r\n"
              u"8002  76            3  hlt\r\n\r\n8000  B\r\n");
    const MessageAnswer error;
    Click("cmdCompile");
    EXPECT_EQ(copyListing(), u"");
}

TEST_F(FrmMainTest, AStepBringsTheNextInstructionIntoViewForwardAndBack) {
    std::u16string program = u"jmp far\r\n";
    for (int address = 0x8003; address < 0x80F0; ++address) program += u"nop\r\n";
    StartWith(program + u"far: nop\r\nhlt");
    Find<QLineEdit>("txtEdit").hide();
    auto& grid = Find<QTableView>("grdRAM");
    const auto isInView = [&](int row) {
        return grid.viewport()->rect().contains(grid.visualRect(Cells().index(row, 0)));
    };
    Click("cmdSingleStep");
    EXPECT_TRUE(isInView(0xF0) && !isInView(0));
    Find<QAction>("mnuStepBack").trigger();
    EXPECT_TRUE(isInView(0) && !isInView(0xF0));
}

TEST_F(FrmMainTest, AStepBackShowsWhatWasShownBefore) {
    StartWith(u"mvi a,5\r\nsta 9000\r\nhlt");
    const auto shown = [this] {
        return QStringList{QString::fromStdU16String(Editor().SelectedText()), Register("A"), Register("PC"),
                           Cells().index(0, 3).data(Qt::AccessibleTextRole).toString()};
    };
    std::vector<QStringList> before;
    for (int step = 0; step < 2; ++step) {
        before.push_back(shown());
        Click("cmdSingleStep");
    }
    EXPECT_EQ(shown().back(), "Address 9000, byte 05, changed");
    const MessageAnswer end;
    before.push_back(shown());
    Click("cmdRun");
    for (; !before.empty(); before.pop_back()) {
        Find<QAction>("mnuStepBack").trigger();
        EXPECT_EQ(shown(), before.back());
    }
}

TEST_F(FrmMainTest, AProgramFromElsewhereIsConvertedInOneStepOfUndo) {
    Start();
    const std::u16string_view source = u"\tORG 2000H\r\nloop: inr a\r\n; \u2029 x\r\nlda list;x\r\nei\r\nlist: db 1,2";
    Editor().SetText(source);
    Editor().SetSelectionStart(15);
    Editor().ToggleMark(2);
    Find<QLineEdit>("txtB").setFocus();
    const QTemporaryDir folder;
    const QString path = folder.filePath("x.dat");
    const auto convert = [this, &path](const char* expected) {
        const FileAnswer file(path);
        const MessageAnswer said;
        Find<QAction>("mnuConvert").trigger();
        EXPECT_EQ(said.Text + said.Details, expected);
        return file.Answered();
    };
    EXPECT_TRUE(
        convert("Left to you:\nLine 5: Bad opcode - EI (this machine has no interrupts, and so no EI)\n\n"
                "Changed and noticed:\nLine 1: ORG is a comment now; the program goes on at 8000, not at 2000\n"
                "Line 4: a blank stands before the comment now\nLine 4: list became 2005H\n"
                "Line 6: DB is a comment now, for 2 bytes at 2005\n\n"
                "The data need a data file: choose its name next, and load it before a run."));
    EXPECT_EQ(Editor().Text(), u"\t; ORG 2000H\r\nloop: inr a\r\n; \u2029 x\r\nlda 2005H ;x\r\nei\r\n; list  db 1,2");
    EXPECT_TRUE(Editor().Marks().Has(2) && Editor().CurrentLine() == 2 && window->focusWidget() == &Editor());
    EXPECT_EQ(Read(path), "2005 : 01 02\r\n");
    QTest::keyClick(&Editor(), Qt::Key_A);
    Editor().undo();
    EXPECT_TRUE(Editor().Text().starts_with(u"\t; ORG")) << "what is typed next is a step of its own";
    Editor().undo();
    EXPECT_EQ(Editor().Text(), source);
    Editor().SetText(u"mvi a,10");
    EXPECT_FALSE(convert("Nothing had to be changed."));
    EXPECT_EQ(Editor().Text(), u"mvi a,10");
    EXPECT_FALSE(Editor().document()->isUndoAvailable());
    Editor().SetText(u"hlt\r\ndb 1");
    const MessageAnswer said;
    const FileAnswer file({});
    Find<QAction>("mnuConvert").trigger();
    EXPECT_EQ(file.Offered, folder.path()) << "not the latest name, which may be the program's";
    Editor().SetText(QString("ei\r\n").repeated(22).toStdU16String());
    const MessageAnswer many;
    Find<QAction>("mnuConvert").trigger();
    EXPECT_TRUE(many.Text.contains("and 2 more") && many.Details.contains("Line 22:"));
}

TEST_F(FrmMainTest, MarksGoWhenSomethingElseChangesTheMachineAndOnlyAfterANewColumnTheStepCanBeTakenBack) {
    StartWith(u"nop\r\nnop\r\nnop\r\nnop\r\nnop\r\nnop");
    const auto isMarked = [this] {
        return Find<QLineEdit>("txtPC").palette().color(QPalette::Text) == platform::ChangedText;
    };
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    const std::function<void()> changes[] = {
        [this] { Click("txtSf"); },
        [this] {
            EditCell(7, 1);
            QTest::keyClicks(QApplication::focusWidget(), "9");
        },
        [this] { AddColumn("a000"); },
        [&] {
            const FileAnswer answer(file.fileName());
            Find<QAction>("mnuLoadData").trigger();
        },
        [this] { Click("cmdReset"); },
        [this] { Click("cmdClear"); },
    };
    for (const auto& change : changes) {
        Click("cmdSingleStep");
        EXPECT_TRUE(isMarked());
        change();
        EXPECT_FALSE(isMarked());
        const std::int32_t before = machine->TStates;
        auto& stepBack = Find<QAction>("mnuStepBack");
        stepBack.setEnabled(true);
        stepBack.trigger();
        EXPECT_EQ(machine->TStates < before, &change == &changes[2]) << &change - changes;
    }
}

TEST_F(FrmMainTest, AnEndlessRunStopsByKeyboardAndNothingElseStartsMeanwhile) {
    StartWith(u"loop:\r\ninr a\r\njmp loop");
    const std::function<void()> stops[] = {
        [this] { Press(Qt::Key_Space); },
        [this] { Press(Qt::Key_Escape); },
        [this] {
            QTest::keyPress(QApplication::focusWidget(), Qt::Key_Return);
            EXPECT_EQ(State(), CommandState::Running) << "a held Enter would go on to what has the focus then";
            QTest::keyRelease(QApplication::focusWidget(), Qt::Key_Return);
        },
        [this] {
            for (const auto& [name, key] : {std::pair{"mnuMemory", Qt::Key_X}, {"mnuCPU", Qt::Key_S}}) {
                auto& menu = Find<QMenu>(name);
                menu.popup({});
                QTest::keyClick(&menu, key);  // X is no entry's letter
            }
        },
        [this] {
            auto& menu = Find<QMenu>("mnuCPU");
            menu.popup({});
            menu.setActiveAction(&Find<QAction>("mnuHalt"));
            QTest::keyClick(&menu, Qt::Key_Return);
        },
    };
    for (const auto& stop : stops) {
        DuringTheRun([&] {
            EXPECT_EQ(State(), CommandState::Running);
            for (const Qt::Key key : {Qt::Key_F4, Qt::Key_F5, Qt::Key_F8}) Press(key);
            Button("cmdHalt").setFocus();
            stop();
        });
        Click("cmdRun");
        EXPECT_EQ(State(), CommandState::ProgramAssembled);
        EXPECT_EQ(window->focusWidget(), &Button("cmdRun")) << "where the run began";
        EXPECT_NE(machine->TStates, 0);
    }
}

TEST_F(FrmMainTest, TheMenuBarDoesNotKeepTheKeyboardAfterARunThatEndsMeanwhile) {
    StartWith(u"loop:\r\ninr a\r\njmp loop");
    DuringTheRun([&] {
        Press(Qt::Key_Alt);
        Find<QAction>("mnuHalt").trigger();
    });
    Click("cmdRun");
    EXPECT_EQ(QApplication::focusWidget(), window->menuBar());
    Press(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window->focusWidget() == &Button("cmdRun"); }));
}

TEST_F(FrmMainTest, OnlyStepsRepeatWhileTheirKeyIsHeldAndCountBothHalvesOfADoubleClick) {
    StartWith(u"nop\r\nnop\r\nnop\r\nnop\r\nhlt");
    const auto pressAndHold = [this](Qt::Key key, Qt::KeyboardModifiers modifiers = {}, bool isHeld = false) {
        if (!isHeld) QTest::keyPress(window->windowHandle(), key, modifiers);
        QTest::simulateEvent(window->windowHandle(), true, key, modifiers, "", true);
    };
    const auto clickTwice = [this](const char* button) {
        Click(button);
        QTest::mouseDClick(&Button(button), Qt::LeftButton);
        QTest::mouseRelease(&Button(button), Qt::LeftButton);
    };
    pressAndHold(Qt::Key_F8);
    clickTwice("cmdSingleStep");
    EXPECT_EQ(machine->TStates, 4 * 4);
    pressAndHold(Qt::Key_F8, Qt::ShiftModifier);
    EXPECT_EQ(machine->TStates, 4 * 2);
    pressAndHold(Qt::Key_F3);
    EXPECT_EQ(machine->TStates, 4 * 4 + 5) << "a second run would go on after the HLT";
    Click("cmdReset");
    clickTwice("cmdSlowRun");
    EXPECT_EQ(machine->TStates, 4 * 4 + 5);
    Click("cmdReset");
    EXPECT_TRUE(Find<QAction>("mnuPaste").autoRepeat() && !Find<QAction>("mnuRun").autoRepeat());
    for (int time = 0; time < 2; ++time) pressAndHold(Qt::Key_L, Qt::AltModifier, time > 0);
    EXPECT_EQ(machine->TStates, 4 * 4 + 5);
    QTest::simulateEvent(&Editor(), true, Qt::Key_A, {}, "a", true);
    EXPECT_EQ(Editor().Text().find(u'a'), std::u16string::npos) << "a key that was pressed in a box goes on";
}

TEST_F(FrmMainTest, ATooltipNamesInstructionsOnlyWhileTheTextIsWhatIsAssembled) {
    Start();
    auto& grid = Find<platform::Grid>("grdRAM");
    const auto tip = [&] { return Cells().index(0, 1).data(Qt::ToolTipRole).toString(); };
    const std::function<void()> ends[] = {
        [this] { Press(Qt::Key_X); },
        [this] { Click("cmdClear"); },
        [this] {
            const MessageAnswer error;
            Editor().SetText(u"foo");
            Click("cmdCompile");
        },
    };
    for (const auto& end : ends) {
        Editor().SetText(u"nop");
        Click("cmdCompile");
        EXPECT_TRUE(tip().contains("Instruction NOP"));
        Editor().setFocus();
        QHelpEvent rest(QEvent::ToolTip, grid.visualRect(Cells().index(0, 1)).center(), {});
        QCoreApplication::sendEvent(grid.viewport(), &rest);
        EXPECT_TRUE(QToolTip::isVisible());
        end();
        EXPECT_FALSE(tip().contains("Instruction"));
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
    }
}

TEST_F(FrmMainTest, F6GoesRoundFromTheEditorThroughRegistersOrKeypadAndMemory) {
    StartWith(u"nop");
    Editor().setFocus();
    QStringList way;
    const auto goRound = [&](int presses) {
        for (way.clear(); presses > 0; --presses) {
            Press(Qt::Key_F6);
            way += window->focusWidget()->objectName();
        }
        return way.join(' ');
    };
    EXPECT_EQ(goRound(4), "txtA txtEdit txtCode txtA");
    EXPECT_EQ(Find<QLineEdit>("txtA").selectedText(), "00");
    Button("cmdRun").setFocus();
    Click("cmdCodeAssistant");
    EXPECT_EQ(goRound(3), "txtCode cmdCodes1 txtCode");
    Click("cmdCodeAssistant");
    EditCell(9, 3);
    EXPECT_EQ(goRound(3), "txtCode txtA txtEdit");
    EXPECT_EQ(Find<QLineEdit>("txtEdit").accessibleName(), "Address 9009") << "back to the cell where it was";
    Press(Qt::Key_Tab);
    EXPECT_EQ(window->focusWidget()->accessibleName(), "Address 9109");
    auto& grid = Find<platform::Grid>("grdRAM");
    for (const char* const start : {"a000", "b000"}) AddColumn(start);
    Editor().setFocus();
    grid.SetCurrentCellInPlace(Cells().index(255, 11));
    grid.horizontalScrollBar()->setValue(grid.horizontalScrollBar()->maximum());
    EXPECT_EQ(goRound(2), "txtA txtEdit");
    EXPECT_EQ(window->focusWidget()->accessibleName(), "Address 9100") << "the first one in view";
    for (const auto* shortcut : window->findChildren<QShortcut*>())
        EXPECT_EQ(shortcut->autoRepeat(), shortcut->key() != QKeySequence("F6"));
}

TEST_F(FrmMainTest, ASmallWindowScrollsToWhatIsUsedByKeyAndToTheLineThatIsShown) {
    StartWith(u"nop\r\nnop\r\nhlt");
    window->showNormal();
    window->resize(300, 200);
    auto& area = *window->findChild<QScrollArea*>();
    const auto isInView = [&](const QWidget& control) {
        const QRect place = control.rect().translated(control.mapTo(area.viewport(), QPoint()));
        return area.viewport()->rect().contains(place);
    };
    EXPECT_EQ(area.viewport()->x(), 0) << "no frame around it";
    Editor().setFocus();
    for (const char* const name : {"txtA", "txtEdit"}) {
        Press(Qt::Key_F6);
        EXPECT_TRUE(isInView(*window->focusWidget())) << name;
    }
    Press(Qt::Key_End);
    EXPECT_EQ(Find<QLineEdit>("txtEdit").accessibleName(), "Address 80FE");
    EXPECT_TRUE(isInView(Find<QLineEdit>("txtEdit")));
    Click("cmdSingleStep");
    EXPECT_EQ(area.horizontalScrollBar()->value(), 0) << "the line is at the left";
    const int left = area.horizontalScrollBar()->maximum();
    area.horizontalScrollBar()->setValue(left);
    QTest::mouseClick(&Find<QLineEdit>("txtC"), Qt::LeftButton);
    EXPECT_EQ(area.horizontalScrollBar()->value(), left) << "what the mouse points at stays";
    Editor().setFocus();
    Press(Qt::Key_Down);
    EXPECT_EQ(area.horizontalScrollBar()->value(), 0);
    AddColumn("fe00");
    EXPECT_GT(area.horizontalScrollBar()->value(), 0) << "the new pair is at the right";
}

TEST_F(FrmMainTest, BoxesStandOverTheLayoutAndNotOverTheEmptyPartOfALargeWindow) {
    Start();
    window->showNormal();
    window->resize(2000, 1500);
    Editor().SetText(u"foo");
    const auto& client = Find<QWidget>("client");
    const QRect layout = client.rect().translated(client.mapToGlobal(QPoint()));
    for (const char* const command : {"cmdCompile", "cmdAdd"}) {
        const ModalAnswer answer([&](QWidget& box) {
            EXPECT_LT((layout.center() - box.geometry().center()).manhattanLength(), 5);
            box.close();
        });
        Click(command);
        EXPECT_TRUE(answer.Answered());
    }
    window->move(-600, 0);
    const ModalAnswer answer([](QWidget& box) {
        EXPECT_TRUE(box.screen()->availableGeometry().contains(box.geometry()));
        box.close();
    });
    Click("cmdAdd");
}

TEST_F(FrmMainTest, ARefusedInstructionIsToldAndShown) {
    StartWith(u"lxi sp,1\r\npush b\r\nhlt");
    const MessageAnswer refusal;
    Find<QAction>("mnuRun").trigger();
    EXPECT_TRUE(refusal.Text.contains("8003") && refusal.Text.contains("0001")) << refusal.Text.toStdString();
    EXPECT_EQ(Editor().SelectedText(), u"push b");
    EXPECT_EQ(Register("PC"), "8003");
    EXPECT_EQ(State(), CommandState::ProgramAssembled);
    EXPECT_EQ(window->focusWidget(), &Button("cmdRun")) << "the button of the entry that ran";
}

TEST_F(FrmMainTest, TheEditKeysActOnTheProgramWhereverTheFocusIs) {
    Start();
    Editor().SetText(u"hlt");
    TypeIntoB("0");
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_X, Qt::Key_V, Qt::Key_A, Qt::Key_C, Qt::Key_V, Qt::Key_V})
        Press(key, Qt::ControlModifier);
    EXPECT_EQ(Editor().Text(), u"hlthlt");
    EXPECT_EQ(Register("B"), "0");
    Find<QLineEdit>("txtB").selectAll();
    QContextMenuEvent open(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(&Find<QLineEdit>("txtB"), &open);
    for (QAction* entry : QApplication::activePopupWidget()->actions())
        if (entry->text().startsWith("&Copy")) entry->trigger();
    EXPECT_EQ(platform::ReadRichText(), u"0") << "so that what is copied in a box can be pasted too";
}

TEST_F(FrmMainTest, ABoxIsStoredWhenAnotherControlHasTheFocusButNotForAMenu) {
    StartWith(u"nop");
    TypeIntoB("5");
    window->menuBar()->setFocus(Qt::MenuBarFocusReason);
    EXPECT_EQ(machine->B, 0);
    Editor().setFocus();
    EXPECT_EQ(machine->B, 5);
    TypeIntoB("7");
    Press(Qt::Key_S, Qt::AltModifier);
    EXPECT_EQ(machine->B, 7) << "an access key moves the focus";
    EXPECT_EQ(machine->TStates, 4) << "and its command comes before all else";
}

TEST_F(FrmMainTest, TheEndOfTheSessionStoresTheColumnsAndAsksOnlyWhereItMay) {
    Start();
    Editor().SetText(u"hlt");
    for (const bool mayAsk : {false, true}) {
        Store().clear();
        const MessageAnswer question(QMessageBox::Cancel);
        window->CommitSession(mayAsk);
        EXPECT_EQ(question.Caption, mayAsk ? "Save?" : "");
        EXPECT_EQ(Store().Get("colcount"), "3");
    }
    EXPECT_EQ(exits, 0);
}

TEST_F(FrmMainTest, ADamagedStoreNeverStopsTheStart) {
    Store().Put("3", "fe00");
    for (const char* damaged : {"-7", "52", "4.5"}) {
        Store().Put("colcount", damaged);
        Start();
        EXPECT_EQ(Cells().columnCount(), 8);
    }
    for (const auto& [key, text] : {std::pair{"colcount", "5"}, {"0", "rubbish"}, {"3", "ff00"}, {"4", "A000"}})
        Store().Put(key, text);
    Start();
    EXPECT_EQ(Cells().columnCount(), 10);
    EXPECT_EQ(Cell(0, 0), "8000");
    EXPECT_EQ(Cell(0, 6), "A000");
}

#ifndef Q_OS_WIN  // where the registry locks itself

// A store is locked for some milliseconds. What holds it longer has been left behind, and Qt would wait for it.
TEST_F(FrmMainTest, TheEndWaitsForALockButNotForOneThatWasLeftBehind) {
    Start();
    const QString name = Store().fileName() + ".lock";
    for (const int age : {1, 4}) {
        Store().Put("colcount", "9");
        QLockFile lock(name);
        ASSERT_TRUE(lock.tryLock());
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite) &&
                    file.setFileTime(QDateTime::currentDateTime().addSecs(-age), QFile::FileModificationTime));
        bool wasKept = false;
        std::thread holder([&] {
            QThread::msleep(300);
            wasKept = QFile::exists(name);
            lock.unlock();
        });
        window->mnuExit_Click();
        holder.join();
        EXPECT_EQ(wasKept, age == 1);
        EXPECT_EQ(Store().Get("colcount"), "3");
    }
}

#endif

TEST_F(FrmMainTest, ExitWorksFromInsideARunAndWhileItsOwnQuestionIsOpen) {
    StartWith(u"loop:\r\njmp loop");
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
    EXPECT_EQ(Store().Get("colcount"), "3");
}

TEST_F(MainWindowTest, UndoKeysReachTheEditorFromEverywhereButABoxWithSomethingOfItsOwn) {
    StartWith(u"hlt");
    Editor().ReplaceSelection(u"nop ");
    auto& box = Find<QLineEdit>("txtB");
    for (QWidget* focused : std::initializer_list<QWidget*>{&Editor(), &Button("cmdCompile"), &box}) {
        focused->setFocus();
        QTest::keyClick(window->windowHandle(), Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(Editor().Text(), u"hlt") << qPrintable(focused->objectName());
        QTest::keyClick(window->windowHandle(), Qt::Key_Y, Qt::ControlModifier);
        EXPECT_EQ(Editor().Text(), u"nop hlt") << qPrintable(focused->objectName());
    }
    box.selectAll();
    QTest::keyClick(window->windowHandle(), Qt::Key_5);
    QTest::keyClick(window->windowHandle(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box.text(), "00");
    EXPECT_EQ(Editor().Text(), u"nop hlt");
}

}  // namespace shell
