#include "datafiles/data_files.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "platform/file_writer.h"
#include "platform/modal.h"

namespace datafiles {

class DataFilesTest : public testing::Test {
protected:
    DataFilesTest() { window.show(); }

    void PutFile(const QByteArray& content) { ASSERT_EQ(platform::WriteFile(path, content), std::nullopt); }

    // What the box says that comes up when the file is loaded.
    QString MessageOfLoading() {
        std::unique_ptr<MessageAnswer> message;
        const ModalAnswer file([&](QWidget& widget) {
            auto& dialog = dynamic_cast<QFileDialog&>(widget);
            dialog.findChild<QLineEdit*>("fileNameEdit")->setText(path);
            static_cast<QDialog&>(dialog).accept();
            message = std::make_unique<MessageAnswer>(QMessageBox::Ok);
        });
        files.mnuLoadData_Click();
        return message->Caption + '|' + message->Text;
    }

    frmSave* Dialog() const {
        for (QWidget* top : QApplication::topLevelWidgets())
            if (top->objectName() == "frmSave" && top->isVisible()) return static_cast<frmSave*>(top);
        return nullptr;
    }

    void OpenDialog() {
        files.mnuSaveData_Click();
        ASSERT_TRUE(QTest::qWaitForWindowActive(Dialog()));
    }

    template <class T>
    T& Control(const char* name) const {
        return *Dialog()->findChild<T*>(name);
    }

    void Click(const char* button) { QTest::mouseClick(&Control<QPushButton>(button), Qt::LeftButton); }

    void Add(const QString& first, const QString& last) {
        Control<QLineEdit>("Text1").setText(first);
        Control<QLineEdit>("Text2").setText(last);
        Click("Command1");
    }

    // What the box says that a click on the button brings up.
    QString MessageOf(const char* button) {
        const MessageAnswer message(QMessageBox::Ok);
        Click(button);
        return message.Text;
    }

    QString Entries() const {
        QStringList entries;
        auto& list = Control<QListWidget>("List1");
        for (int row = 0; row < list.count(); ++row) entries += list.item(row)->text();
        return entries.join('|');
    }

    void ClickEntry(int row) {
        auto& list = Control<QListWidget>("List1");
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(row)).center());
    }

    bool CanRemove() const { return Control<QPushButton>("Command3").isEnabled(); }

    QTemporaryDir directory;
    QString path = directory.filePath("Memory.dat");
    QWidget window;
    std::unique_ptr<m8085::MachineState> machine = std::make_unique<m8085::MachineState>();
    platform::FileDialog cDialog;
    int refreshes = 0;
    DataFiles files{*machine, cDialog, [this] { ++refreshes; }, window};
};

TEST_F(DataFilesTest, LoadingRefreshesTheDisplayOrTellsWhyNot) {
    EXPECT_EQ(MessageOfLoading(), "Velmora|The file " + path.toLower() + " does not exist. Please verify the path.");
    PutFile("8000: 1 80000000");
    EXPECT_EQ(MessageOfLoading(),
              "Error!|There was some problem with opening the data file. It is probably not in the right format.");
    EXPECT_EQ(refreshes, 0);

    PutFile("8000 : 3E 5 76 ;\r\n");
    const FileAnswer file(path);
    files.mnuLoadData_Click();
    EXPECT_EQ(machine->Memory[0x8001], 5);
    EXPECT_EQ(refreshes, 1);
}

TEST_F(DataFilesTest, WritesTheRangesAndClosesAndTheNextOpeningStartsEmpty) {
    OpenDialog();
    Add("8000", "8001");
    Add("80fF", "80ff");
    Add("9000", "8000");
    {
        const FileAnswer file(path);
        Click("Command4");
    }
    EXPECT_EQ(Control<QLineEdit>("Text3").text(), path);
    PutFile("what was there before, and longer than what comes, so that it would show behind it");
    machine->Memory[0x8001] = 5;  // as of the click on OK
    files.mnuSaveData_Click();
    EXPECT_EQ(Entries(), "8000 - 8001|80fF - 80ff|9000 - 8000");
    Click("OKButton");
    EXPECT_EQ(Dialog(), nullptr);

    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readLine().startsWith("; Data file created on "));
    EXPECT_EQ(file.readAll(), "\r\n8000 : 0 5 \r\n80FF : 0 \r\n9000 : \r\n");
    files.mnuSaveData_Click();
    EXPECT_EQ(Entries(), "");
    Click("CancelButton");
    EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(DataFilesTest, WhatIsWrongIsToldAndChangesNothing) {
    const QString first = "The starting addresss is invalid. Enter a valid hex address (0000 - FFFF).";
    const QString last = "The ending addresss is invalid. Enter a valid hex address (0000 - FFFF).";
    OpenDialog();
    EXPECT_EQ(MessageOf("Command1"), first);
    Control<QLineEdit>("Text1").setText("FFFF");
    EXPECT_EQ(MessageOf("Command1"), last);
    EXPECT_EQ(Entries(), "");
    Add("0", "FFFF");
    EXPECT_EQ(MessageOf("OKButton"), "Please specify the output file name.");
    const QString target = directory.filePath("missing/Memory.dat");
    Control<QLineEdit>("Text3").setText(target);
    EXPECT_TRUE(MessageOf("OKButton").startsWith("The file " + target + " could not be written: "));
    EXPECT_EQ(Entries(), "0 - FFFF");
}

TEST_F(DataFilesTest, RemoveReachesTheSelectedEntryByMouse) {
    OpenDialog();
    for (const char* address : {"1", "2", "3"}) Add(address, address);
    EXPECT_FALSE(CanRemove());
    ClickEntry(1);
    EXPECT_TRUE(CanRemove());
    Click("Command3");
    Click("Command3");
    EXPECT_EQ(Entries(), "1 - 1|3 - 3");
    ClickEntry(1);
    Control<QLineEdit>("Text1").setFocus();
    EXPECT_FALSE(CanRemove());
    ClickEntry(0);
    Click("Command2");
    EXPECT_EQ(Entries(), "");
    EXPECT_FALSE(CanRemove());
}

TEST_F(DataFilesTest, RemoveReachesTheSelectedEntryByKeyboard) {
    OpenDialog();
    for (const char* address : {"1", "2", "3"}) Add(address, address);
    auto& list = Control<QListWidget>("List1");
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_End);
    QTest::keyClick(Dialog(), Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Entries() == "1 - 1|2 - 2"; }));
    QTest::keyClick(&list, Qt::Key_Home);
    QTest::keyClick(&list, Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(Entries(), "2 - 2");
}

}  // namespace datafiles
