#include "platform/file_dialog.h"

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QScreen>
#include <algorithm>

namespace platform {

namespace {

// Qt's own dialog takes double quotes for the marks between several names, and gives the part between two of them. Here
// one file is chosen, and the text is its name.
class SingleNameDialog : public QFileDialog {
public:
    using QFileDialog::QFileDialog;

    // After the dialog was accepted.
    QString Path() const { return quotedPath_.isEmpty() ? selectedFiles().value(0) : quotedPath_; }

    void accept() override {
        const auto* const name = findChild<QLineEdit*>("fileNameEdit");
        if (name == nullptr || !name->text().contains(u'"')) return QFileDialog::accept();

        const QFileInfo file(directory(), name->text());
        if (file.isDir()) return setDirectory(file.absoluteFilePath());
        if (file.exists() && acceptMode() == AcceptSave && !MayReplace(file.fileName())) return;
        quotedPath_ = file.absoluteFilePath();
        QDialog::accept();
    }

private:
    // In the words with which the dialog asks about every other name.
    bool MayReplace(const QString& name) {
        const QString question = QFileDialog::tr("%1 already exists.\nDo you want to replace it?").arg(name);
        return QMessageBox::warning(this, windowTitle(), question, QMessageBox::Yes | QMessageBox::No,
                                    QMessageBox::No) == QMessageBox::Yes;
    }

    QString quotedPath_;
};

QList<QUrl>& AddedPlaces() {
    static QList<QUrl> places;
    return places;
}

// After the dialog's own ones, and wide enough for their names.
void OfferPlaces(QFileDialog& dialog, QList<QUrl> places) {
    constexpr int mostPixels = 200;
    for (const QUrl& added : AddedPlaces())
        if (!places.contains(added)) places.append(added);
    dialog.setSidebarUrls(places);
    auto* const list = dialog.findChild<QListView*>("sidebar");
    if (list != nullptr)
        list->setMinimumWidth(std::min(list->sizeHintForColumn(0) + 2 * list->frameWidth(), mostPixels));
}

}  // namespace

void FileDialog::AddPlace(const QString& folder) {
    const QUrl place = QUrl::fromLocalFile(QDir::cleanPath(folder));
    if (QFileInfo(folder).isDir() && !AddedPlaces().contains(place)) AddedPlaces().append(place);
}

std::optional<QString> FileDialog::Show(QWidget& control, QFileDialog::AcceptMode mode, const QString& name) {
    SingleNameDialog dialog(control.window());
    dialog.setAcceptMode(mode);
    dialog.setWindowTitle(mode == QFileDialog::AcceptOpen ? QFileDialog::tr("Open") : QFileDialog::tr("Save As"));
    const QList<QUrl> ownPlaces = dialog.sidebarUrls();
    OfferPlaces(dialog, ownPlaces);
    dialog.setDirectory(directory_.isEmpty() ? QDir::currentPath() : directory_);
    if (!name.isEmpty()) dialog.selectFile(name);
    // Qt keeps its size, which may be that of another screen or scale.
    constexpr QSize frame(20, 40);
    dialog.resize(dialog.size().boundedTo(control.screen()->availableSize() - frame));
    const bool isAccepted = dialog.exec() == QDialog::Accepted;
    // It stores its places for all programs that have such a dialog.
    dialog.setSidebarUrls(ownPlaces);
    if (!isAccepted || dialog.Path().isEmpty()) return std::nullopt;

    const QFileInfo file(dialog.Path());
    directory_ = file.absolutePath();
    AddPlace(directory_);
    lastName_ = file.fileName();
    return QDir::toNativeSeparators(dialog.Path());
}

}  // namespace platform
