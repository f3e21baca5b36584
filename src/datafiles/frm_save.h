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

// Collects ranges of memory and writes them to a data file. Once closed it stays, hidden, and the next opening finds it
// empty: a box of its own may still be open over it.
class frmSave : public QDialog {
    Q_OBJECT

public:
    // The window is the one that the dialog belongs to.
    frmSave(const m8085::MemoryBytes& memory, QWidget& window);
    ~frmSave() override;

    // Shows the dialog, empty, or brings it forward as it is where it is open.
    void Open();

private:
    void Form_Load();
    void PlaceControls();
    void ConnectControls();

    void Command1_Click();
    void Command3_Click();
    void Command4_Click();
    void OKButton_Click();

    void EnableRemove();
    void Refuse(QLineEdit& box, const QString& text);
    void Tell(const QString& text);
    std::vector<memedata::AddressRange> Ranges() const;

    const m8085::MemoryBytes& memory_;
    platform::FileDialog cDialog;

    // In the order of the Tab key. Remove comes right after the list: only from there is it enabled.
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
