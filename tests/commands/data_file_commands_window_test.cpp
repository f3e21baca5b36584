#include "commands/data_file_commands.h"

#include <sys/stat.h>
#include <unistd.h>

#include "platform/clipboard.h"
#include "shell/main_window.h"

namespace commands {

class DataFileCommandsTest : public shell::MainWindowTest {
protected:
    DataFileCommandsTest() { Start(); }

    void Choose(const char* entry) { Find<QAction>(entry).trigger(); }

    datafiles::frmSave* Dialog() const {
        for (auto* dialog : window->findChildren<datafiles::frmSave*>())
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
    QString path = QDir::toNativeSeparators(directory.filePath("Memory.dat"));
};

TEST_F(DataFileCommandsTest, LoadingRefreshesTheDisplayOrSaysWhyNot) {
    QString shown;  // when the message came
    const auto load = [&](const QString& from) {
        const FileAnswer file(from);
        const MessageAnswer message(QMessageBox::Ok, [&] { shown = Cell(0, 1); });
        Choose("mnuLoadData");
        return message.Text;
    };
    EXPECT_EQ(load(path), "The file " + path.toLower() + " does not exist. Please verify the path.");
    Write(path, "8000: 1 80000000");
    EXPECT_EQ(load(path), "There was some problem with opening the data file. It is probably not in the right format.");
    EXPECT_EQ(Cell(0, 1), "00");
    Write(path, "8000 : 3E 5 76");
    EXPECT_EQ(load(path), "");
    EXPECT_EQ(Cell(1, 1), "05");

    // What a file stores before it fails is not undone by what was typed before.
    auto& grid = Find<QTableView>("grdRAM");
    grid.setCurrentIndex(Cells().index(0, 1));
    QTest::keyClicks(&Find<QLineEdit>("txtEdit"), "7");
    EXPECT_EQ(machine->Memory[0x8000], 0x07);
    Write(path, "8000 : 22 80000000");
    EXPECT_NE(load(path), "");
    EXPECT_EQ(shown, "22");
    grid.setCurrentIndex(Cells().index(1, 1));
    EXPECT_EQ(machine->Memory[0x8000], 0x22);
#ifdef Q_OS_UNIX
    ASSERT_EQ(::mkfifo(directory.filePath("pipe").toUtf8(), 0600), 0);
    ::alarm(20);  // ends the test where it waits for somebody to write
    EXPECT_TRUE(load(directory.filePath("pipe")).startsWith("There was some problem with opening the data file."));
    ::alarm(0);
#endif
}

TEST_F(DataFileCommandsTest, BytesAreCopiedAsADataFileHasThem) {
    machine->Memory[0x8002] = 5;
    machine->Memory[0x8010] = machine->Ports[0x10] = 0x3E;
    auto& grid = Find<QTableView>("grdRAM");
    for (const auto& [cell, expected] : {std::pair{Cells().index(2, 0), u"8002 : 5"},
                                         {Cells().index(0x10, 1), u"8010 : 3E"},
                                         {Cells().index(0x10, 7), u"; port 10 : 3E"}}) {
        grid.setCurrentIndex(cell);
        Choose("mnuCopyByte");
        EXPECT_EQ(platform::ReadRichText(), expected);
    }
    for (const auto& [rows, expected] : {std::pair{"8001-8011", u"8001 : 0 5 0 0 0 0 0 0 0 0 0 0 0 0 0 3E\r\n8011 : 0"},
                                         {" ffff - FFFF ", u"FFFF : 0"},
                                         {"", u""},
                                         {"8002-8001", nullptr},
                                         {"8000-", nullptr},
                                         {"10000", nullptr}}) {
        platform::PutRichText(u"");
        const InputAnswer input(rows);
        const MessageAnswer message;
        Choose("mnuCopyRows");
        EXPECT_EQ(message.Text.isEmpty(), expected != nullptr);
        EXPECT_EQ(platform::ReadRichText(), expected == nullptr ? u"" : expected) << rows;
    }

    for (QWidget* control : std::initializer_list<QWidget*>{&Find<QLineEdit>("txtEdit"), grid.viewport()}) {
        QContextMenuEvent open(QContextMenuEvent::Mouse, {5, 5}, control->mapToGlobal(QPoint(5, 5)));
        bool isOffered = false;
        QTimer::singleShot(0, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            isOffered = menu != nullptr && menu->actions().contains(&Find<QAction>("mnuCopyByte"));
            if (menu != nullptr) menu->close();
        });
        QApplication::sendEvent(control, &open);
        QCoreApplication::processEvents();
        EXPECT_TRUE(isOffered) << qPrintable(control->objectName());
    }
}

TEST_F(DataFileCommandsTest, WritesTheRangesAndClosesOrSaysWhatIsWrongAndStays) {
    Choose("mnuSaveData");
    const QString wrong = " addresss is invalid. Enter a valid hex address (0000 - FFFF).";
    {
        const MessageAnswer told;
        QTest::keyClick(&Control<QLineEdit>("Text1"), Qt::Key_Return);
        EXPECT_FALSE(told.Answered()) << "Enter in a box presses no button";
    }
    EXPECT_EQ(Add("", "0"), "The starting" + wrong);
    EXPECT_EQ(Dialog()->focusWidget(), &Control<QLineEdit>("Text1"));
    EXPECT_EQ(Add("FFFF", "10000"), "The ending" + wrong);
    EXPECT_EQ(Control<QLineEdit>("Text2").selectedText(), "10000");
    Control<QLineEdit>("Text1").setFocus();
    QTest::mouseClick(&Control<QLineEdit>("Text2"), Qt::LeftButton, {}, {3, 5});
    EXPECT_EQ(Control<QLineEdit>("Text2").selectedText(), "") << "a click goes to its place";
    for (const auto& [first, last] : {std::pair{"8000", "8001"}, {"FFFF", "fffF"}, {"9000", "8000"}}) Add(first, last);
    EXPECT_EQ(Click("OKButton"), "Please specify the output file name.");
    const QString nowhere = directory.filePath("missing/Memory.dat");
    Control<QLineEdit>("Text3").setText(nowhere);
    EXPECT_TRUE(Click("OKButton").startsWith("The file " + nowhere + " could not be written: "));
    EXPECT_EQ(Entries(), "8000 - 8001|FFFF - fffF|9000 - 8000");
    const FileAnswer dialog(path);
    Click("Command4");
    Write(path, "what was there before, and longer than what comes, so that it would show after it");
    machine->Memory[0x8001] = 0xF;
    machine->Memory[0x8000] = machine->Memory[0xFFFF] = 0xA5;  // as of the click on OK
    Click("OKButton");
    EXPECT_EQ(Dialog(), nullptr);

    const QString text = Read(path);
    const QString created = text.section("\r\n", 0, 0).section("; Data file created on ", 1);
    EXPECT_TRUE(QLocale::system().toDate(created.section(" at ", 0, 0), QLocale::ShortFormat).isValid());
    EXPECT_EQ(text.section("\r\n", 1), "\r\n8000 : A5 F \r\nFFFF : A5 \r\n9000 : \r\n");
    Choose("mnuSaveData");
    EXPECT_EQ(Entries(), "");
}

TEST_F(DataFileCommandsTest, RemoveReachesTheSelectedEntryByMouseAndByKeyboard) {
    Choose("mnuSaveData");
    ASSERT_TRUE(QTest::qWaitFor([this] { return Dialog()->isActiveWindow(); }));
    for (const char* address : {"1", "2", "3", "4"}) Add(address, address);
    auto& list = Control<QListWidget>("List1");
    list.setCurrentRow(0);
    EXPECT_FALSE(Control<QPushButton>("Command3").isEnabled()) << "the focus is not in the list";
    list.setFocus();
    EXPECT_TRUE(Control<QPushButton>("Command3").isEnabled());
    QTest::keyClick(&list, Qt::Key_End);
    QTest::keyClick(Dialog(), Qt::Key_R, Qt::AltModifier);
    EXPECT_EQ(Entries(), "1 - 1|2 - 2|3 - 3");
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(1)).center());
    for (int click = 0; click < 2; ++click) Click("Command3");
    EXPECT_EQ(Entries(), "1 - 1|3 - 3");
    EXPECT_TRUE(list.hasFocus());
    Click("Command2");
    EXPECT_EQ(Entries(), "");
    Click("CancelButton");
    EXPECT_EQ(Dialog(), nullptr);
}

}  // namespace commands
