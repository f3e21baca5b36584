#include "platform/dialogs.h"

#include "platform/file_dialog.h"
#include "platform/modal.h"
#include "support/window_test.h"

namespace platform {

TEST(Dialogs, AMessageIsAsWideAsItsTextUpToABound) {
    QWidget window;
    for (const int words : {1, 20, 60}) {
        const BoxAnswer<QMessageBox> answer([words](QMessageBox& box) {
            const auto& label = *box.findChild<QLabel*>("qt_msgbox_label");
            EXPECT_EQ(label.height() > 2 * label.fontMetrics().lineSpacing(), words == 60);
            EXPECT_LT(label.width(), words == 1 ? 200 : 700);
            EXPECT_GE(label.font().pixelSize() * 3,
                      QFontDatabase::systemFont(QFontDatabase::GeneralFont).pointSize() * 4);
            EXPECT_EQ(label.textFormat(), Qt::PlainText) << "what looks like a tag may be the name of a file";
            box.close();
        });
        ShowMessage(window, QString("word ").repeated(words), QMessageBox::Information);
    }
}

TEST(FileDialog, OffersTheFileThatWasChosenLast) {
    QWidget window;
    const QTemporaryDir folder;
    const QTemporaryDir other;
    FileDialog dialog;
    for (const QString& path : {folder.filePath("first.dat"), other.filePath("second.dat")}) {
        const FileAnswer choice(path);
        EXPECT_EQ(dialog.ShowSave(window).value_or(""), path);
        const FileAnswer cancel({});
        EXPECT_EQ(dialog.ShowOpen(window).value_or("nothing"), "nothing");
        EXPECT_EQ(cancel.Offered, path);
        EXPECT_TRUE(cancel.Places.contains(QUrl::fromLocalFile(QFileInfo(path).path())));
    }
}

}  // namespace platform
