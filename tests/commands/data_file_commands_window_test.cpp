#include "commands/data_file_commands.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "files/file_writer.h"
#include "platform/modal.h"
#include "support/bench.h"

namespace commands {

class DataFileCommandsTest : public testing::Test {
protected:
    DataFileCommandsTest() { window.show(); }

    void PutFile(const QByteArray& content) {
        ASSERT_EQ(files::WriteFile(path.toStdString(), content.toStdString()), std::nullopt);
    }

    datafiles::frmSave* Dialog() const {
        for (auto* dialog : window.findChildren<datafiles::frmSave*>())
            if (dialog->isVisible()) return dialog;
        return nullptr;
    }

    template <class T>
    T& Control(const char* name) const {
        return *Dialog()->findChild<T*>(name);
    }

    // What the box says that a click on the button brings up; nothing where none does.
    QString Click(const char* button) {
        const MessageAnswer message;
        QTest::mouseClick(&Control<QPushButton>(button), Qt::LeftButton);
        return message.Text;
    }

    QString Add(const QString& first, const QString& last) {
        Control<QLineEdit>("Text1").setText(first);
        Control<QLineEdit>("Text2").setText(last);
        return Click("Command1");
    }

    QString Entries() const {
        QStringList entries;
        for (const auto* entry : Control<QListWidget>("List1").findItems("", Qt::MatchContains))
            entries += entry->text();
        return entries.join('|');
    }

    QTemporaryDir directory;
    QString path = directory.filePath("Memory.dat");
    QWidget window;
    std::unique_ptr<m8085::MachineState> machine = std::make_unique<m8085::MachineState>();
    platform::FileDialog cDialog;
    panels::ColumnList columns;
    m8085::CodeMap codeMap;
    panels::MemoryGrid memoryGrid{*machine, codeMap, columns, &window};
    execution::RunControl runControl{*machine, codeMap, support::SilentView()};
    DataFileCommands files{*machine, cDialog, runControl, memoryGrid};
};

TEST_F(DataFileCommandsTest, LoadingRefreshesTheDisplayOrTellsWhyNot) {
    const auto load = [this] {
        const FileAnswer file(path);
        const MessageAnswer message;
        files.mnuLoadData_Click();
        return message.Text;
    };
    EXPECT_EQ(load(), "The file " + path.toLower() + " does not exist. Please verify the path.");
    memoryGrid.FormatGrid();
    memoryGrid.RefreshRAMDisplay();
    const auto shown = [this](int row) {
        const QAbstractItemModel& cells = *window.findChild<QTableView*>("grdRAM")->model();
        return cells.index(row, 1).data().toString();
    };
    PutFile("8000: 1 80000000");
    EXPECT_EQ(load(), "There was some problem with opening the data file. It is probably not in the right format.");
    EXPECT_EQ(shown(0), "00");
    PutFile("8000 : 3E 5 76");
    EXPECT_EQ(load(), "");
    EXPECT_EQ(shown(1), "05");
}

TEST_F(DataFileCommandsTest, WritesTheRangesAndClosesOrTellsWhatIsWrongAndStays) {
    files.mnuSaveData_Click();
    const QString wrong = " addresss is invalid. Enter a valid hex address (0000 - FFFF).";
    EXPECT_EQ(Add("", "0"), "The starting" + wrong);
    EXPECT_EQ(Add("FFFF", "10000"), "The ending" + wrong);
    for (const auto& [first, last] : {std::pair{"8000", "8001"}, {"FFFF", "fffF"}, {"9000", "8000"}}) Add(first, last);
    EXPECT_EQ(Click("OKButton"), "Please specify the output file name.");
    const QString nowhere = directory.filePath("missing/Memory.dat");
    Control<QLineEdit>("Text3").setText(nowhere);
    EXPECT_TRUE(Click("OKButton").startsWith("The file " + nowhere + " could not be written: "));
    EXPECT_EQ(Entries(), "8000 - 8001|FFFF - fffF|9000 - 8000");
    const FileAnswer dialog(path);
    Click("Command4");
    PutFile("what was there before, and longer than what comes, so that it would show behind it");
    machine->Memory[0x8000] = machine->Memory[0xFFFF] = 0xA5;  // as of the click on OK
    Click("OKButton");
    EXPECT_EQ(Dialog(), nullptr);

    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readLine().left(23), "; Data file created on ");
    EXPECT_EQ(file.readAll(), "\r\n8000 : A5 0 \r\nFFFF : A5 \r\n9000 : \r\n");
    files.mnuSaveData_Click();
    EXPECT_EQ(Entries(), "");
}

TEST_F(DataFileCommandsTest, RemoveReachesTheSelectedEntryByMouseAndByKeyboard) {
    files.mnuSaveData_Click();
    ASSERT_TRUE(QTest::qWaitForWindowActive(Dialog()));
    for (const char* address : {"1", "2", "3", "4"}) Add(address, address);
    auto& list = Control<QListWidget>("List1");
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_End);
    QTest::keyClick(Dialog(), Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Entries() == "1 - 1|2 - 2|3 - 3"; }));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(1)).center());
    for (int click = 0; click < 2; ++click) Click("Command3");
    EXPECT_EQ(Entries(), "1 - 1|3 - 3");
    Click("Command2");
    EXPECT_EQ(Entries(), "");
}

}  // namespace commands
