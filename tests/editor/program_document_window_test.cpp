#include "editor/program_document.h"

#include <functional>
#include <memory>

#include "platform/modal.h"
#include "support/window_test.h"

namespace editor {

class ProgramDocumentTest : public testing::Test {
protected:
    ProgramDocumentTest() {
        QObject::connect(&document, &ProgramDocument::TitleChanged, [this](const QString& to) { title = to; });
        QObject::connect(&document, &ProgramDocument::TextChanged, [this] { ++changes; });
        window.resize(500, 400);
        window.show();
        document.txtCode().setFocus();
        document.mnuNew_Click();
        QCoreApplication::processEvents();
    }

    QString Path(const QString& name) const { return QDir::toNativeSeparators(folder.filePath(name)); }

    void Open(const QString& path) {
        FileAnswer answer(path);
        document.mnuOpen_Click();
    }

    // Whether the editor takes the files, or the text.
    bool Drop(const QList<QUrl>& urls, const QString& dropped = {}) {
        QMimeData data;
        if (urls.isEmpty())
            data.setText(dropped);
        else
            data.setUrls(urls);
        QDragEnterEvent enter({}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(text.viewport(), &enter);
        const QImage before = text.viewport()->grab().toImage();
        QDragMoveEvent move({1, 4}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(text.viewport(), &move);
        EXPECT_TRUE(!urls.isEmpty() || text.Text().empty() || text.viewport()->grab().toImage() != before)
            << "a caret shows where it will go";
        QDropEvent drop(text.cursorRect().center(), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        drop.setDropAction(urls.isEmpty() ? Qt::CopyAction : Qt::MoveAction);
        QApplication::sendEvent(text.viewport(), &drop);
        EXPECT_TRUE(!enter.isAccepted() || drop.dropAction() == Qt::CopyAction) << "a file stays where it is";
        QCoreApplication::processEvents();
        return enter.isAccepted() && drop.isAccepted();
    }

    // What an input method types.
    void Commit(const QString& typed) {
        QInputMethodEvent event;
        event.setCommitString(typed);
        QApplication::sendEvent(&text, &event);
    }

    QWidget window;
    ProgramDocument document{&window};
    platform::ProgramText& text = document.txtCode();
    QTemporaryDir folder;
    QString title;
    int changes = 0;
};

TEST_F(ProgramDocumentTest, OpensAnyLineEndsAndSavesTheSameTextInItsEncoding) {
    Write(Path("a.asm"), "caf\xE9:\nmov a,b\rhlt\r\n");
    Open(Path("a.asm"));
    EXPECT_EQ(title, "Velmora - [" + Path("a.asm") + "]");
    EXPECT_EQ(text.Text(), u"caf\u00E9:\r\nmov a,b\r\nhlt\r\n");
    EXPECT_EQ(changes, 1);
    QTest::keyClick(&text, Qt::Key_Tab);
    document.mnuSave_Click();
    EXPECT_EQ(title, "Velmora - [" + Path("a.asm") + "]");
    EXPECT_EQ(Read(Path("a.asm")), "\tcaf\xE9:\r\nmov a,b\r\nhlt\r\n");
}

TEST_F(ProgramDocumentTest, AFailedOrCancelledOpenChangesNothing) {
    Write(Path("large.asm"), QByteArray(1024 * 1024 + 1, '\n'));
    Write(Path("wide.asm"), "nop\n" + QByteArray(32'768, ' '));
    Write(Path("grows.asm"), QByteArray(600'000, '\n'));  // with CR LF it could not be opened again
    Write(Path("rich.asm"), "{\\rtf1 nop}");
    EXPECT_FALSE(Drop({QUrl::fromLocalFile(folder.path())}));
    Drop({QUrl::fromLocalFile(Path("none.asm"))});
    for (const auto& [name, reason] : {std::pair("large.asm", "more than 1048576 bytes"),
                                       {"wide.asm", "a line of more than 32767 characters"},
                                       {"grows.asm", "with CR LF it has more than 1048576 bytes"},
                                       {"rich.asm", "not a text file"}}) {
        const MessageAnswer told;
        Drop({QUrl::fromLocalFile(Path(name))});
        EXPECT_TRUE(told.Text.contains(reason)) << qPrintable(told.Text);
        EXPECT_EQ(title, "Velmora - [Untitled]");
    }
    Open({});
    EXPECT_EQ(title, "Velmora - [Untitled]");
}

TEST_F(ProgramDocumentTest, ColoursAreNoChangeAndFollowTheText) {
    QTest::keyClicks(&text, "nop ; nop x");
    const auto formats = text.document()->firstBlock().layout()->formats();
    ASSERT_EQ(formats.size(), 4);
    for (qsizetype i = 0; i < 3; ++i) {  // a mnemonic, a comment, and a mnemonic in it
        const QTextCharFormat& format = formats[i].format;
        EXPECT_EQ(format.foreground().color(), i == 0 ? QColor(0, 0, 255) : QColor(125, 0, 0));
        EXPECT_TRUE(format.font().bold() == (i != 1) && format.font().italic() == (i != 0)) << i;
    }
}

TEST_F(ProgramDocumentTest, SaveAsksForANameOnceAndAFailedWriteKeepsTheMark) {
    QTest::keyClicks(&text, "hlt");
    {
        FileAnswer answer(Path("later/program"));
        document.mnuSave_Click();
    }
    EXPECT_EQ(title, "Velmora - [Untitled*]");
    QTest::keyClick(&text, Qt::Key_Return);
    document.mnuSave_Click();
    EXPECT_EQ(title, "Velmora - [" + Path("later/program") + "*]") << "the document has its new name all the same";
    QDir(folder.path()).mkdir("later");
    document.mnuSave_Click();
    EXPECT_EQ(title, "Velmora - [" + Path("later/program") + "]");
    EXPECT_EQ(Read(Path("later/program")), "hlt\r\n");
}

TEST_F(ProgramDocumentTest, AFileNameIsUsedAsGivenAndReplacedOnlyAfterAQuestion) {
#ifdef Q_OS_WIN
    const auto names = {" blank.asm", "it's.asm"};
#else
    const auto names = {" blank.asm", "a \"b\".asm", "\"q\"", "line\nbreak.asm"};
#endif
    for (const char* const name : names) {
        QTest::keyClicks(&text, "hlt");
        for (const bool again : {false, true}) {
            MessageAnswer replace(QMessageBox::Yes);
            FileAnswer answer(Path(name));
            document.mnuSaveAs_Click();
            EXPECT_EQ(replace.Text.contains("replace"), again) << name;
            EXPECT_EQ(Read(Path(name)), "hlt");
        }
        document.mnuNew_Click();
        Open(Path(name));
        EXPECT_EQ(title, "Velmora - [" + Path(name) + "]");
        document.mnuNew_Click();
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), std::ssize(names));
}

TEST_F(ProgramDocumentTest, AFileNamedAtTheStartOpensOrIsSaidWhyNot) {
    Write(Path("a.asm"), "nop");
    Write(Path("b.asm"), "{\\rtf1 nop}");
    document.OpenNamed(QDir::current().relativeFilePath(Path("a.asm")));
    EXPECT_EQ(title, "Velmora - [" + Path("a.asm") + "]");
    const FileAnswer cancel({});
    document.mnuOpen_Click();
    EXPECT_TRUE(cancel.Places.contains(QUrl::fromLocalFile(folder.path())));
    for (const char* const name : {"missing.asm", "b.asm", ""}) {
        const MessageAnswer message;
        document.OpenNamed(Path(name));
        EXPECT_TRUE(message.Text.startsWith(Path(name)) && message.Text.endsWith('.')) << message.Text.toStdString();
    }
    EXPECT_EQ(text.Text(), u"nop");
}

TEST_F(ProgramDocumentTest, NewAsksOnlyForAChangedTextAndCancelKeepsIt) {
    document.mnuNew_Click();
    QTest::keyClicks(&text, "hlt");
    {
        MessageAnswer cancel(QMessageBox::Cancel);
        document.mnuNew_Click();
        EXPECT_EQ(cancel.Text, "Program has changed. Save changes?");
        EXPECT_EQ(cancel.Caption, "Save?");
    }
    EXPECT_EQ(text.Text(), u"hlt");
    {
        MessageAnswer no(QMessageBox::No);
        document.mnuNew_Click();
    }
    EXPECT_EQ(title, "Velmora - [Untitled]");
    text.undo();
    EXPECT_EQ(text.Text(), u"hlt");
    EXPECT_EQ(title, "Velmora - [Untitled*]");
}

TEST_F(ProgramDocumentTest, ADroppedFileIsOpenedUnlessTheTextBeforeItWouldBeLost) {
    const QUrl file = QUrl::fromLocalFile(Path("a.asm"));
    Write(Path("a.asm"), "nop");
    QTest::keyClicks(&text, "x");
    for (const auto answer : {QMessageBox::Cancel, QMessageBox::Yes}) {
        FileAnswer noName({});
        MessageAnswer keep(answer);
        Drop({file});
        EXPECT_EQ(text.Text(), u"x");
    }
    MessageAnswer no(QMessageBox::No);
    EXPECT_FALSE(Drop({file, file}));
    EXPECT_TRUE(Drop({file}));
    EXPECT_EQ(text.Text(), u"nop");
}

TEST_F(ProgramDocumentTest, NewWithYesClearsTheTextWhateverBecameOfTheSaving) {
    QTest::keyClicks(&text, "hlt");
    std::unique_ptr<FileAnswer> cancelledDialog;
    ModalAnswer yes([&cancelledDialog](QWidget& box) {
        cancelledDialog = std::make_unique<FileAnswer>(QString());
        dynamic_cast<QMessageBox&>(box).button(QMessageBox::Yes)->click();
    });
    document.mnuNew_Click();
    EXPECT_EQ(text.Text(), u"");
    EXPECT_EQ(title, "Velmora - [Untitled]");
}

TEST_F(ProgramDocumentTest, EveryCopyPastesAndIsPlainTextToOthers) {
    for (const bool byMenu : {true, false}) {
        QApplication::clipboard()->clear();
        text.SetText(u"nop\r\nhlt");
        document.mnuSelectAll_Click();
        byMenu ? document.mnuCut_Click() : QTest::keyClick(&text, Qt::Key_Delete, Qt::ShiftModifier);
        EXPECT_EQ(text.Text(), u"");
        EXPECT_EQ(QApplication::clipboard()->text(), "nop\nhlt");
        document.mnuPaste_Click();
        EXPECT_EQ(text.Text(), u"nop\r\nhlt");
    }
    QApplication::clipboard()->setText("plain");
    document.mnuSelectAll_Click();
    document.mnuPaste_Click();
    EXPECT_EQ(text.Text(), u"");
}

TEST_F(ProgramDocumentTest, WhateverComesInIsPlainAsPartOfItsStep) {
    Commit("a\u00A0;\u00A0b\u2029\uFDD0");
    EXPECT_EQ(text.Text(), u"a ;\u00A0b\u2029\uFDD0") << "but in comments";
    text.SetSelectionStart(2);
    QTest::keyClick(&text, Qt::Key_Delete);
    EXPECT_EQ(text.Text(), u"a  b\r\n\uFDD0");
    EXPECT_EQ(text.SelectionStart(), 2);
    text.undo();
    EXPECT_EQ(text.Text(), u"a ;\u00A0b\u2029\uFDD0");
    text.redo();
    document.mnuSelectAll_Click();
    text.ReplaceSelection({});
    Drop({}, "\v\n;\v");
    text.ReplaceSelection(u"\v:\v");
    text.InsertAt({7}, u"\r\n");
    EXPECT_EQ(text.Text(), u" \r\n;\v\v:\r\n ") << "a label is split from a comment";
    EXPECT_EQ(changes, 8);
}

TEST_F(ProgramDocumentTest, WhatOpenWouldRefuseIsRefusedWholeAndNothingElseIsLost) {
    const std::u16string before = std::u16string(32'766, u' ') + u"\r\nab";
    const auto refuses = [this](const std::u16string& kept, const std::function<void()>& change) {
        const MessageAnswer told;
        change();
        QCoreApplication::processEvents();
        EXPECT_TRUE(told.Text.contains("stays as it was")) << qPrintable(told.Text);
        EXPECT_TRUE(text.Text() == kept && changes == 0);
    };
    text.SetText(before);
    text.SetSelectionStart(32'766);
    changes = 0;
    refuses(before, [&] { QTest::keyClick(&text, Qt::Key_Delete); });
    text.SetSelectionStart(32'766);
    QTest::keyClicks(&text, "x");
    text.undo();
    changes = 0;
    refuses(before, [&] { text.ReplaceSelection(u"xy"); });
    refuses(before, [&] { text.ReplaceSelection(std::u16string(520'000, u'\n')); });
    refuses(before, [&] { Commit("\u0001"); });
    refuses(before, [&] { Drop({}, "xy"); });
    text.redo();
    changes = 0;
    refuses(std::u16string(32'766, u' ') + u"x\r\nab", [&] { QTest::keyClick(&text, Qt::Key_Delete); });
    EXPECT_FALSE(text.document()->isRedoAvailable());
    text.undo();
    EXPECT_EQ(text.Text(), before);
    text.SetSelectionStart(text.Length() - 2);
    text.ReplaceSelection(u"{\\rtf1");
    EXPECT_TRUE(text.Text().ends_with(u"\n{\\rtf1ab")) << "only the first line makes it another kind of file";
}

}  // namespace editor
