#pragma once

#include <QDialog>
#include <QGroupBox>
#include <QListWidget>
#include <vector>

#include "datafiles/data_file.h"
#include "platform/button.h"
#include "platform/file_dialog.h"
#include "platform/text_box.h"

namespace datafiles {

// Collects ranges of memory and writes them to a data file. Deletes itself when it is closed.
class frmSave : public QDialog {
    Q_OBJECT

public:
    // The window is the one that the dialog stands before.
    frmSave(const m8085::MemoryBytes& memory, QWidget& window);
    ~frmSave() override;

private:
    void PlaceControls();
    void ConnectControls();

    void Command1_Click();
    void Command3_Click();
    void Command4_Click();
    void OKButton_Click();

    void EnableRemove();
    void Tell(const QString& text);
    std::vector<memedata::AddressRange> Ranges() const;

    const m8085::MemoryBytes& memory;
    platform::FileDialog cDialog;

    // In the order of the Tab key. Remove comes right behind the list: only from there is it enabled.
    QGroupBox Frame1{"Enter a range", this};
    platform::TextBox Text1{"Text1", &Frame1};
    platform::TextBox Text2{"Text2", &Frame1};
    platform::Button Command1{"Command1", "&Add", &Frame1};
    QListWidget List1{this};
    platform::Button Command3{"Command3", "&Remove", this};
    platform::Button Command2{"Command2", "C&lear All", this};
    platform::TextBox Text3{"Text3", this};
    platform::Button Command4{"Command4", "&Browse...", this};
    platform::Button OKButton{"OKButton", "&OK", this};
    platform::Button CancelButton{"CancelButton", "&Cancel", this};
};

}  // namespace datafiles
