#include <memory>

#include "aids/code_assistant.h"
#include "aids/delay_designer.h"
#include "assembler/instruction_table.h"
#include "platform/modal.h"
#include "support/test_rig.h"
#include "support/window_test.h"

namespace aids {

class CodeAssistantTest : public testing::Test {
protected:
    CodeAssistantTest() {
        Activate(window);
        assistant.cmdCodeAssistant_Click();
    }

    // Those of the panel that is shown.
    QList<platform::Button*> LiveButtons() const {
        QList<platform::Button*> live = window.findChildren<platform::Button*>();
        live.removeIf([](const auto* button) { return !button->isVisible() || !button->isEnabled(); });
        return live;
    }

    void Click(const QString& caption) {
        for (auto* button : LiveButtons())
            if (button->text() == caption) return QTest::mouseClick(button, Qt::LeftButton);
        FAIL() << qPrintable(caption);
    }

    // Clicks what the operand needs and returns the text that it should come to.
    QString Enter(const QString& operand) {
        const QString digits = operand == "I8" ? "3F" : operand == "I16" ? "A09C" : "";
        for (const QChar digit : digits) Click(digit);
        if (!digits.isEmpty()) return digits.toLower();
        Click(operand);
        return (operand == "SP" || operand == "PSW" ? operand : operand.left(1)).toLower();
    }

    QWidget window;
    platform::ProgramText txtCode{&window};
    QWidget frmRegs{&window};
    QWidget frmRAM{&window};
    CodeAssistant assistant{txtCode, frmRegs, frmRAM, &window};
};

TEST_F(CodeAssistantTest, EveryFormCanBeEnteredByClicksAndAssemblesToItsOpcode) {
    const auto rig = std::make_unique<support::TestRig>();
    for (const assembler::InstructionRow& row : assembler::InstructionRows()) {
        const auto text = [](std::string_view word) { return QString::fromStdString(std::string(word)); };
        const QString mnemonic = text(row.Mnemonic);
        const QString first = text(row.Operands[0]);
        const QString second = text(row.Operands[1]);
        txtCode.SetText(u"");
        const bool isBranch = first == "I16" && (mnemonic[0] == 'J' || mnemonic[0] == 'C');
        const InputAnswer label("loop");
        Click(mnemonic);
        ASSERT_EQ(label.Said, isBranch ? "Label|Enter a label for " + mnemonic + ':' : "");
        QString line = mnemonic.toLower() + ' ';
        if (!first.isEmpty()) line += isBranch ? "loop" : Enter(first);
        if (!second.isEmpty()) line += ',' + Enter(second);
        ASSERT_EQ(txtCode.Text(), (line + "\r\n").toStdU16String());
        ASSERT_TRUE(rig->Assemble(txtCode.Text() + u"loop:").Succeeded) << qPrintable(line);
        ASSERT_EQ(rig->machine.Memory[0x8000], row.Opcode) << qPrintable(line);
    }
}

TEST_F(CodeAssistantTest, StopEndsAnEntryAnywhereAndOnlyRegistersOfSomeFormAreLive) {
    for (const auto* button : LiveButtons()) EXPECT_NE(button->toolTip(), "") << qPrintable(button->text());
    for (const auto& [mnemonic, keys] :
         {std::pair{"STAX", "BC DE"}, {"PUSH", "BC DE HL PSW"}, {"LXI", "BC DE HL SP"}}) {
        Click(mnemonic);
        QStringList live;
        for (const auto* button : LiveButtons()) live += button->text();
        EXPECT_EQ(live.join(' '), keys);
        assistant.cmdCodeAssistant_Click();
        EXPECT_TRUE(frmRegs.isVisible() && frmRAM.isVisible() && LiveButtons().empty());
        assistant.cmdCodeAssistant_Click();
    }
    const auto press = [this](const QString& key) {
        window.findChild<QWidget*>(key)->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Shift);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    };
    press("cmdCodes5");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);  // the second of two quick ones
    EXPECT_EQ(txtCode.Text(), u"stax push lxi lxi ");
    press("cmdRegs8");
    EXPECT_EQ(txtCode.Text(), u"stax push lxi lxi b,");
    QTest::keyClicks(QApplication::focusWidget(), "9F");
    QTest::simulateEvent(QApplication::focusWidget(), true, Qt::Key_F, {}, "f", true);
    EXPECT_EQ(txtCode.Text(), u"stax push lxi lxi b,9f");
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdDigits15");
    Click("0");
    EXPECT_EQ(QApplication::focusWidget(), &txtCode) << "the mouse leaves the caret in view";
    // SP, where the focus was last, is not an operand of STAX.
    for (const char* keys : {"cmdCodes25 cmdRegs11", "cmdCodes13"})
        for (const QString& key : QString(keys).split(' ')) press(key);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdRegs8");
    const std::u16string text = txtCode.Text();
    txtCode.SetRules(
        {[](auto lines) { return std::u16string(lines); }, [](auto) { return "full"; }, [](auto) { return 0; }});
    Click("BC");
    EXPECT_TRUE(txtCode.Text() == text && LiveButtons().size() > 13) << "what was refused does not go on";
}

TEST_F(CodeAssistantTest, AsksForLabels) {
    for (const auto& [button, answer] : {std::pair{"Label", "loop"}, {"Label", "loop:"}, {"Label", ""}, {"JNZ", ""}}) {
        const InputAnswer label(answer);
        Click(button);
    }
    EXPECT_EQ(txtCode.Text(), u"loop:\r\nloop:\r\n:\r\njnz \r\n");
}

TEST_F(CodeAssistantTest, ASecondClickPressesNoKeyThatTheFirstHasBroughtUnderTheMouse) {
    auto* inx = window.findChild<QWidget*>("cmdCodes25");
    auto* sp = window.findChild<QWidget*>("cmdRegs11");
    const QPoint samePlace = sp->mapFromGlobal(inx->mapToGlobal(inx->rect().center()));
    QTest::mouseClick(inx, Qt::LeftButton);
    QTest::mouseClick(sp, Qt::LeftButton, {}, samePlace);
    EXPECT_EQ(txtCode.Text(), u"inx ");
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    QTest::mouseClick(sp, Qt::LeftButton, {}, samePlace);
    EXPECT_EQ(txtCode.Text(), u"inx sp\r\n");
}

TEST(DelayDesigner, PutsTheLoopInThePlaceOfTheSelectionAndRefusesALongTime) {
    platform::ProgramText txtCode{nullptr};
    txtCode.SetText(u"nop\r\nhlt");
    txtCode.SelectLine(2);
    DelayDesigner designer(txtCode);
    for (const QString milliseconds : {"129001", "1"}) {
        const InputAnswer input(milliseconds);
        const MessageAnswer message;
        designer.cmdDelay_Click();
        EXPECT_EQ(input.Said, "Delay|How many milliseconds of delay do you want?");
        EXPECT_EQ(message.Text, milliseconds == "1" ? "" : "Cool down, dude!!");
    }
    EXPECT_EQ(txtCode.Text(), u"nop\r\n\r\nlxi d,80\r\ndd_1:\r\ndcx d\r\nmov a,e\r\nora d\r\njnz dd_1\r\n");
    EXPECT_EQ(txtCode.focusWidget(), &txtCode) << "what is typed next goes after the loop";
}

}  // namespace aids
