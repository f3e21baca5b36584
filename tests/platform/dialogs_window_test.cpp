#include "platform/dialogs.h"

#include "platform/file_dialog.h"
#include "platform/modal.h"
#include "support/window_test.h"

namespace platform {

TEST(Dialogs, AMessageIsAsWideAsItsTextUpToABound) {
    QWidget window;
    const auto words = [](const char* word, int count) { return QString(word).repeated(count).trimmed(); };
    for (const QString& text : {words("word ", 1), words("word ", 20), words("word ", 60), words("word", 60)}) {
        for (const bool asks : {false, true}) {
            const ModalAnswer answer([&](QWidget& box) {
                const auto& label = *box.findChild<QLabel*>(asks ? "" : "qt_msgbox_label");
                EXPECT_EQ(label.height() >= 2 * label.fontMetrics().lineSpacing(), text.size() > 100);
                EXPECT_LT(label.width(), text.size() < 10 ? 200 : 700);
                EXPECT_TRUE(box.testAttribute(Qt::WA_SetFont)) << "letters as large as the desktop's";
                EXPECT_EQ(label.textFormat(), Qt::PlainText) << "a file's name may look like a tag";
                box.close();
            });
            asks ? void(AskText(window, text, "Ask")) : ShowMessage(window, text, QMessageBox::Information);
        }
    }
}

TEST(FileDialog, OffersTheFileThatWasChosenLast) {
    QWidget window;
    const QTemporaryDir folder, other;
    FileDialog dialog;
    for (const QString& path : {folder.filePath("first.dat"), other.filePath("second.dat")}) {
        const FileAnswer choice(path);
        EXPECT_EQ(dialog.ShowSave(window).value_or(""), QDir::toNativeSeparators(path));
        const FileAnswer cancel({});
        EXPECT_EQ(dialog.ShowOpen(window).value_or("nothing"), "nothing");
        EXPECT_EQ(cancel.Offered, path);
        const QUrl place = QUrl::fromLocalFile(QFileInfo(path).path());
        EXPECT_TRUE(cancel.Places.contains(place));
        const QSettings ofAllPrograms(QSettings::UserScope, "QtProject");
        EXPECT_FALSE(ofAllPrograms.value("FileDialog/shortcuts").toStringList().contains(place.toString()));
    }
    const FileAnswer start({});
    FileDialog().ShowSave(window);
    EXPECT_EQ(start.Offered, QDir::currentPath()) << "and not where another dialog was";
}

}  // namespace platform
