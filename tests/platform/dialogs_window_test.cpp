#include "platform/dialogs.h"

#include "platform/file_dialog.h"
#include "platform/modal.h"
#include "support/window_test.h"

namespace platform {

TEST(Dialogs, AMessageIsAsWideAsItsTextUpToABound) {
    QWidget window;
    QSize shortest;
    for (const int words : {1, 20, 60}) {
        QSize label;
        const BoxAnswer<QMessageBox> answer([&label](QMessageBox& box) {
            label = box.findChild<QLabel*>("qt_msgbox_label")->size();
            box.close();
        });
        ShowMessage(window, QString("word ").repeated(words), QMessageBox::Information);
        if (words == 1) shortest = label;
        EXPECT_EQ(label.height() > 2 * shortest.height(), words == 60);
        EXPECT_TRUE(label.width() < (words == 1 ? 200 : 700)) << label.width();
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
        QStringList offered;
        const BoxAnswer<QFileDialog> look([&offered](QFileDialog& box) {
            offered = box.selectedFiles();
            box.reject();
        });
        EXPECT_EQ(dialog.ShowOpen(window).value_or("nothing"), "nothing");
        EXPECT_EQ(offered.join(' '), path);
    }
}

}  // namespace platform
