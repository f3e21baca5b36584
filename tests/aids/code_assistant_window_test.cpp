#include "aids/code_assistant.h"

#include <gtest/gtest.h>

#include <QTest>
#include <map>
#include <memory>

#include "assembler/assembler.h"
#include "assembler/instruction_table.h"
#include "assembler/source_preparation.h"
#include "platform/modal.h"

namespace aids {

class CodeAssistantTest : public testing::Test {
protected:
    CodeAssistantTest() {
        window.resize(792, 554);
        cmdCodeAssistant.setGeometry(536, 8, 137, 25);
        frmRAM.setObjectName("frmRAM");
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        QTest::mouseClick(&cmdCodeAssistant, Qt::LeftButton);
    }

    QString VisiblePanels() const {
        QStringList visible;
        for (const char* name : {"frmRAM", "frmCA", "frmCA2", "frmCA3"})
            if (window.findChild<QWidget*>(name)->isVisible()) visible += name;
        return visible.join(' ');
    }

    QList<platform::Button*> LiveButtons() const {
        QList<platform::Button*> live = window.findChild<QWidget*>(VisiblePanels())->findChildren<platform::Button*>();
        live.removeIf([](const auto* button) { return !button->isEnabled(); });
        return live;
    }

    void Click(std::string_view caption) {
        for (auto* button : LiveButtons())
            if (button->text().toStdString() == caption) return QTest::mouseClick(button, Qt::LeftButton);
        FAIL() << caption;
    }

    // An empty answer cancels the prompt.
    static ModalAnswer AnswerNextPrompt(const QString& expected, const QString& answer) {
        return ModalAnswer([expected, answer](QWidget& widget) {
            auto& box = dynamic_cast<QInputDialog&>(widget);
            EXPECT_EQ(box.windowTitle() + '|' + box.labelText(), "Label|" + expected);
            box.setTextValue(answer);
            box.done(answer.isEmpty() ? QDialog::Rejected : QDialog::Accepted);
        });
    }

    // Clicks what the operand needs and returns the text that it should come to.
    QString EnterOperand(const std::string& operand) {
        if (!operand.starts_with('I')) {
            Click(operand);
            return QString::fromStdString(operand == "SP" || operand == "PSW" ? operand : operand.substr(0, 1))
                .toLower();
        }
        const std::string digits = operand == "I8" ? "3F" : "A09C";
        for (const char digit : digits) Click(std::string(1, digit));
        return QString::fromStdString(digits).toLower();
    }

    QWidget window;
    platform::ProgramText txtCode{&window};
    platform::Button cmdCodeAssistant{"cmdCodeAssistant", "Start &Code Assistant", &window};
    QWidget frmRAM{&window};
    CodeAssistant assistant{txtCode, cmdCodeAssistant, frmRAM, &window};
};

TEST_F(CodeAssistantTest, EveryFormCanBeEnteredByClicksAndAssemblesToItsOpcode) {
    const auto machine = std::make_unique<m8085::MachineState>();
    const auto codeMap = std::make_unique<m8085::CodeMap>();
    for (int row = 0; row < m8085::InstructionRows; ++row) {
        const int anchor = m8085::FirstAnchor + row * m8085::InstructionRowLength;
        const std::string mnemonic(m8085::MnemonicAt(anchor));
        const std::string first(m8085::OperandAt(anchor, 1));
        const std::string second(m8085::OperandAt(anchor, 2));
        txtCode.SetText(u"");

        const bool isBranch = first == "I16" && (mnemonic[0] == 'J' || mnemonic[0] == 'C');
        QString line = QString::fromStdString(mnemonic).toLower() + (isBranch ? " loop" : " ");
        const auto label = AnswerNextPrompt("Enter a label for " + QString::fromStdString(mnemonic) + ':', "loop");
        Click(mnemonic);
        ASSERT_EQ(label.Answered(), isBranch) << mnemonic;
        if (!isBranch && !first.empty()) line += EnterOperand(first);
        if (!second.empty()) line += ',' + EnterOperand(second);

        ASSERT_EQ(txtCode.Text(), (line + "\r\n").toStdU16String());
        ASSERT_EQ(VisiblePanels(), "frmCA");
        const std::u16string program = assembler::ConvertLineEnds(txtCode.Text() + u"loop:");
        ASSERT_TRUE(assembler::AssembleProgram(program, *machine, *codeMap).Succeeded) << qPrintable(line);
        ASSERT_EQ(machine->Memory[0x8000], m8085::OpcodeAt(anchor)) << qPrintable(line);
    }
}

TEST_F(CodeAssistantTest, StopEndsAnEntryAnywhereAndOnlyRegistersOfSomeFormAreLive) {
    const std::map<std::string, QString> keys = {
        {"STAX", "BC DE"}, {"PUSH", "BC DE HL PSW"}, {"LXI", "BC DE HL SP"}, {"MOV", "A B C D E H L M"}};
    for (const auto& [mnemonic, expected] : keys) {
        Click(mnemonic);
        EXPECT_EQ(VisiblePanels(), "frmCA3");
        QStringList live;
        for (const auto* button : LiveButtons()) live += button->text();
        EXPECT_EQ(live.join(' '), expected);
        assistant.cmdCodeAssistant_Click();
        EXPECT_EQ(VisiblePanels(), "frmRAM");
        EXPECT_EQ(cmdCodeAssistant.text(), "Start &Code Assistant");
        assistant.cmdCodeAssistant_Click();
        EXPECT_EQ(cmdCodeAssistant.text(), "Stop &Code Assistant");
    }
    EXPECT_EQ(txtCode.Text(), u"lxi mov push stax ");
}

TEST_F(CodeAssistantTest, PromptsForLabels) {
    for (const char* answer : {"loop", "loop:", ""}) {
        const ModalAnswer label = AnswerNextPrompt("Enter a label:", answer);
        Click("Label");
    }
    const ModalAnswer label = AnswerNextPrompt("Enter a label for JNZ:", "");
    Click("JNZ");
    EXPECT_EQ(txtCode.Text(), u"loop:\r\nloop:\r\n:\r\njnz \r\n");
}

TEST_F(CodeAssistantTest, TheFocusGoesFromPanelToPanelAndNowhereElse) {
    Click("LXI");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(txtCode.Text(), u"lxi b,");
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdDigits0");
    txtCode.setFocus();
    assistant.cmdCodeAssistant_Click();
    EXPECT_EQ(QApplication::focusWidget(), &txtCode);
}

TEST_F(CodeAssistantTest, MnemonicsStandInRowsOfSixUnderTheirGroups) {
    const auto placeOf = [this](const char* name) { return window.findChild<QWidget*>(name)->pos(); };
    EXPECT_EQ(placeOf("cmdCodes2"), QPoint(7, 40));      // LDA, at 100 and 600 twips
    EXPECT_EQ(placeOf("cmdCodes33"), QPoint(240, 188));  // SUI, the last of the second group
    EXPECT_EQ(placeOf("cmdCodes76"), QPoint(147, 455));  // OUT
    EXPECT_EQ(placeOf("lblCaption0"), QPoint(8, 24));
    EXPECT_EQ(placeOf("lblCaption4"), QPoint(7, 435));
}

}  // namespace aids
