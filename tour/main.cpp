// Shows the main job without a screen: opens the real window, types and saves a program, then loads each program given
// into the editor, presses the real buttons, prints each end message and saves a picture of the window.
//
//   velmora_tour [--pictures FOLDER] PROGRAM...
//   velmora_tour --guide FOLDER PROGRAM      the pictures of the user guide, around one program

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <memory>

#include "machine/code_map.h"
#include "machine/machine_state.h"
#include "platform/palette.h"
#include "platform/program_text.h"
#include "shell/frm_main.h"
#include "shell/frm_splash.h"

namespace {

// A window with a machine of its own, and what a user does to it.
class Workbench {
public:
    Workbench() {
        window.resize(800, 590);
        window.show();
        window.activateWindow();
        QCoreApplication::processEvents();
    }

    template <class Control>
    Control& Find(const char* name) {
        return *window.findChild<Control*>(name);
    }

    platform::ProgramText& Editor() { return Find<platform::ProgramText>("txtCode"); }

    // Presses a button and closes the message boxes that come of it. Returns the text of the last one.
    QString Press(const char* button) {
        QString message;
        QTimer closer;
        QObject::connect(&closer, &QTimer::timeout, [&message] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                message = box->text();
                box->accept();
            }
        });
        closer.start(0);
        Find<QPushButton>(button).click();
        return message;
    }

    bool Load(const QString& path) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) return false;
        Editor().SetText(QString::fromUtf8(file.readAll()).toStdU16String());
        return true;
    }

    void TypeAndSave(const QString& path) {
        Editor().setFocus();
        QTest::keyClicks(&Editor(), "mvi a,5 ; typed by hand\rhlt");
        QTimer dialogUser;
        QObject::connect(&dialogUser, &QTimer::timeout, [&path] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) return;
            dialog->findChild<QLineEdit*>("fileNameEdit")->setText(path);
            static_cast<QDialog*>(dialog)->accept();
        });
        dialogUser.start(0);
        Find<QAction>("mnuSave").trigger();
    }

    void TakePicture(const QString& folder, const QString& name) {
        QCoreApplication::processEvents();
        window.grab().save(QDir(folder).filePath(name + ".png"));
    }

    void ShowSplash(const QString& folder, const QString& name) {
        splash.ShowAbout();
        QCoreApplication::processEvents();
        splash.grab().save(QDir(folder).filePath(name + ".png"));
        splash.hide();
    }

    shell::frmMain& Window() { return window; }

private:
    std::unique_ptr<m8085::MachineState> machine = std::make_unique<m8085::MachineState>();
    std::unique_ptr<m8085::CodeMap> codeMap = std::make_unique<m8085::CodeMap>();
    shell::frmSplash splash;
    shell::frmMain window{*machine, *codeMap, [] {}, [] {}};
};

bool Visit(Workbench& bench, const QString& path, const QString& pictures) {
    const QString name = QFileInfo(path).completeBaseName();
    if (!bench.Load(path)) {
        std::printf("%s: cannot be read\n", qPrintable(name));
        return false;
    }
    const QString failure = bench.Press("cmdCompile");
    const QString message = failure.isEmpty() ? bench.Press("cmdRun") : failure;
    std::printf("%s: %s\n", qPrintable(name), qPrintable(message));
    if (!pictures.isEmpty()) bench.TakePicture(pictures, name);
    return failure.isEmpty();
}

bool VisitAll(const QStringList& programs, const QString& pictures) {
    Workbench bench;
    const QTemporaryDir folder;
    const QString typed = folder.filePath("typed.asm");
    bench.TypeAndSave(typed);
    std::printf("typed.asm: saved, %lld bytes\n", static_cast<long long>(QFileInfo(typed).size()));
    bool good = QFileInfo(typed).size() > 0 && Visit(bench, typed, pictures);
    for (const QString& path : programs) good = Visit(bench, path, pictures) && good;
    return good;
}

void TakeAssistantPictures(Workbench& bench, const QString& folder) {
    bench.Press("cmdCodeAssistant");
    bench.TakePicture(folder, "code-assistant");
    for (QPushButton* button : bench.Find<QWidget>("frmCA").findChildren<QPushButton*>())
        if (button->text() == "MVI") button->click();
    bench.TakePicture(folder, "register-keypad");
    for (QPushButton* button : bench.Find<QWidget>("frmCA3").findChildren<QPushButton*>())
        if (button->text() == "A") button->click();
    bench.TakePicture(folder, "hex-keypad");
    bench.Press("cmdCodeAssistant");
}

void TakeSaveDialogPicture(Workbench& bench, const QString& folder) {
    bench.Find<QAction>("mnuSaveData").trigger();
    auto* dialog = bench.Window().findChild<QDialog*>("frmSave");
    dialog->findChild<QLineEdit*>("Text1")->setText("9000");
    dialog->findChild<QLineEdit*>("Text2")->setText("90ff");
    dialog->findChild<QPushButton*>("Command1")->click();
    dialog->findChild<QLineEdit*>("Text3")->setText("numbers.dat");
    QCoreApplication::processEvents();
    dialog->grab().save(QDir(folder).filePath("save-data.png"));
    dialog->close();
}

bool TakeGuidePictures(const QString& program, const QString& folder) {
    Workbench bench;
    if (!bench.Load(program)) return false;
    bench.Press("cmdCompile");
    bench.TakePicture(folder, "window");
    for (int step = 0; step < 12; ++step) bench.Press("cmdSingleStep");
    bench.TakePicture(folder, "stepping");

    auto& grid = bench.Find<QTableView>("grdRAM");
    grid.setCurrentIndex(grid.model()->index(2, 3));
    QTest::keyClicks(QApplication::focusWidget(), "2a");
    bench.TakePicture(folder, "memory-edit");

    bench.Editor().SetText(u"; add two numbers\r\nmvi a,12\r\nadi 3g\r\nhlt\r\n");
    bench.Press("cmdCompile");
    bench.TakePicture(folder, "error");

    bench.Editor().SetText(u"mvi b,12\r\n");
    bench.Editor().SetSelectionStart(bench.Editor().Length());
    TakeAssistantPictures(bench, folder);
    TakeSaveDialogPicture(bench, folder);
    bench.ShowSplash(folder, "about");
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    platform::ApplyFixedAppearance(application);

    const QStringList arguments = QApplication::arguments().mid(1);
    if (arguments.size() == 3 && arguments.constFirst() == "--guide")
        return TakeGuidePictures(arguments.at(2), arguments.at(1)) ? 0 : 1;
    if (arguments.size() > 2 && arguments.constFirst() == "--pictures")
        return VisitAll(arguments.mid(2), arguments.at(1)) ? 0 : 1;
    if (!arguments.isEmpty()) return VisitAll(arguments, {}) ? 0 : 1;
    std::puts("Which programs? velmora_tour [--pictures FOLDER] PROGRAM...");
    return 2;
}
