#include "datafiles/frm_save.h"

#include <QApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>

#include "files/file_writer.h"
#include "platform/dialogs.h"
#include "platform/fonts.h"
#include "platform/twips.h"

namespace datafiles {

namespace {

using platform::Place;

// Where a list entry keeps the addresses that its text names.
constexpr int firstAddress = Qt::UserRole;
constexpr int lastAddress = Qt::UserRole + 1;

// The text also becomes the accessible name of the control that it labels.
void PlaceLabel(const char* name, const QString& text, QWidget& control, int left, int top, int width, int height) {
    auto* label = new QLabel(text, control.parentWidget());
    label->setObjectName(name);
    control.setAccessibleName(text.section(':', 0, 0));
    Place(*label, left, top, width, height);
}

}  // namespace

frmSave::frmSave(const m8085::MemoryBytes& memory, QWidget& window) : QDialog(&window), memory_(memory) {
    setObjectName("frmSave");
    setWindowTitle("Save To Data File");
    setWindowIcon(window.windowIcon());
    setFont(platform::WindowFont());
    PlaceControls();
    ConnectControls();
}

// The focus still moves while the controls are destroyed.
frmSave::~frmSave() {
    disconnect(qApp, nullptr, this, nullptr);
}

void frmSave::Open() {
    if (!isVisible()) Form_Load();
    showNormal();
    raise();
    activateWindow();
}

void frmSave::Form_Load() {
    for (QLineEdit* box : {&Text1, &Text2, &Text3}) box->clear();
    List1.clear();
    cDialog = {};
    EnableRemove();
    Text1.setFocus();
}

void frmSave::PlaceControls() {
    setFixedSize(platform::Pixels(6120), platform::Pixels(5100));
    Frame1.setObjectName("Frame1");
    Place(Frame1, 240, 240, 4215, 1695);
    PlaceLabel("Label1", "Starting Address (hex):  ", Text1, 240, 360, 2070, 195);
    Place(Text1, 2400, 240, 1455, 285);
    PlaceLabel("Label2", "Ending Address (hex): ", Text2, 240, 720, 1935, 195);
    Place(Text2, 2400, 600, 1455, 285);
    Place(Command1, 2400, 960, 1455, 375);

    PlaceLabel("Label3", "Ranges to be saved:", List1, 240, 2040, 1785, 195);
    List1.setObjectName("List1");
    Place(List1, 240, 2280, 2175, 2010);
    Place(Command2, 2640, 2280, 1455, 375);
    Place(Command3, 2640, 2760, 1455, 375);

    PlaceLabel("Label4", "Output Filename:", Text3, 240, 4440, 1455, 195);
    Place(Text3, 240, 4680, 4335, 285);
    Place(Command4, 4680, 4680, 1335, 255);
    Place(OKButton, 4680, 240, 1215, 375);
    Place(CancelButton, 4680, 720, 1215, 375);
}

void frmSave::ConnectControls() {
    connect(&Command1, &QPushButton::clicked, this, &frmSave::Command1_Click);
    connect(&Command2, &QPushButton::clicked, &List1, &QListWidget::clear);
    connect(&Command3, &QPushButton::clicked, this, &frmSave::Command3_Click);
    connect(&Command4, &QPushButton::clicked, this, &frmSave::Command4_Click);
    connect(&OKButton, &QPushButton::clicked, this, &frmSave::OKButton_Click);
    connect(&CancelButton, &QPushButton::clicked, this, &frmSave::close);
    connect(&List1, &QListWidget::itemSelectionChanged, this, &frmSave::EnableRemove);
    connect(qApp, &QApplication::focusChanged, this, &frmSave::EnableRemove);
}

// Remove is enabled while the focus is in the list; a click on Remove takes it away from there and must find Remove
// enabled still. The dialog's own focus counts, which it keeps while another window is in front.
void frmSave::EnableRemove() {
    const QWidget* focus = focusWidget();
    const bool isSelected = !List1.selectedItems().isEmpty();
    Command3.setEnabled(isSelected && (focus == &List1 || focus == &Command3));
}

void frmSave::Command1_Click() {
    const auto first = memedata::ReadAddress(Text1.text().toStdU16String());
    if (!first) return Refuse(Text1, "The starting addresss is invalid. Enter a valid hex address (0000 - FFFF).");
    const auto last = memedata::ReadAddress(Text2.text().toStdU16String());
    if (!last) return Refuse(Text2, "The ending addresss is invalid. Enter a valid hex address (0000 - FFFF).");

    auto* entry = new QListWidgetItem(Text1.text() + " - " + Text2.text(), &List1);
    entry->setData(firstAddress, *first);
    entry->setData(lastAddress, *last);
}

void frmSave::Command3_Click() {
    List1.setFocus();
    qDeleteAll(List1.selectedItems());
    List1.setCurrentItem(nullptr);  // Qt has selected a neighbour
}

void frmSave::Command4_Click() {
    if (const auto path = cDialog.ShowSave(*this)) Text3.setText(*path);
}

void frmSave::OKButton_Click() {
    const QString path = Text3.text();
    if (path.isEmpty()) return Tell("Please specify the output file name.");

    const QDateTime now = QDateTime::currentDateTime();
    const QLocale user = QLocale::system();
    const std::string text =
        memedata::ComposeDataFile(Ranges(), memory_, user.toString(now.date(), QLocale::ShortFormat).toStdString(),
                                  user.toString(now.time(), QLocale::LongFormat).toStdString());
    if (const auto reason = files::WriteFile(QFileInfo(path).filesystemFilePath(), text))
        return Tell("The file " + path + " could not be written: " + QString::fromStdString(*reason));
    close();
}

// The user can type the address again at once.
void frmSave::Refuse(QLineEdit& box, const QString& text) {
    Tell(text);
    box.setFocus();
    box.selectAll();
}

void frmSave::Tell(const QString& text) {
    platform::ShowMessage(*this, text, QMessageBox::NoIcon);
}

std::vector<memedata::AddressRange> frmSave::Ranges() const {
    std::vector<memedata::AddressRange> ranges;
    for (int row = 0; row < List1.count(); ++row) {
        const QListWidgetItem& entry = *List1.item(row);
        ranges.push_back({static_cast<std::uint16_t>(entry.data(firstAddress).toUInt()),
                          static_cast<std::uint16_t>(entry.data(lastAddress).toUInt())});
    }
    return ranges;
}

}  // namespace datafiles
