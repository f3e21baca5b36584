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
#include <cstdlib>
#include <functional>

#include "platform/program_text.h"
#include "shell/workbench.h"

namespace {

// The whole program, and what a user does to it.
class Tour : public shell::Workbench {
public:
    Tour() : Workbench([] {}) {
        Window.show();
        Window.activateWindow();
        QCoreApplication::processEvents();
    }

    template <class Control>
    Control& Find(const char* name) {
        return *Window.findChild<Control*>(name);
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

    void TakePicture(QWidget& widget, const QString& folder, const QString& name) {
        QCoreApplication::processEvents();
        const QString path = QDir(folder).filePath(name + ".png");
        if (widget.grab().save(path)) return;
        std::printf("%s cannot be written\n", qPrintable(path));
        std::exit(1);
    }
};

bool Visit(Tour& tour, const QString& path, const QString& pictures) {
    const QString name = QFileInfo(path).completeBaseName();
    if (!tour.Load(path)) {
        std::printf("%s: cannot be read\n", qPrintable(name));
        return false;
    }
    const QString failure = tour.Press("cmdCompile");
    const QString message = failure.isEmpty() ? tour.Press("cmdRun") : failure;
    std::printf("%s: %s\n", qPrintable(name), qPrintable(message));
    if (!pictures.isEmpty()) tour.TakePicture(tour.Window, pictures, name);
    return message.startsWith("End of code encountered.");
}

bool VisitAll(const QStringList& programs, const QString& pictures) {
    Tour tour;
    const QTemporaryDir folder;
    const QString typed = folder.filePath("typed.asm");
    tour.TypeAndSave(typed);
    std::printf("typed.asm: saved, %lld bytes\n", static_cast<long long>(QFileInfo(typed).size()));
    bool good = QFileInfo(typed).size() > 0 && Visit(tour, typed, pictures);
    for (const QString& path : programs) good = Visit(tour, path, pictures) && good;
    return good;
}

void ClickKey(Tour& tour, const char* panel, const QString& caption) {
    for (QPushButton* button : tour.Find<QWidget>(panel).findChildren<QPushButton*>())
        if (button->text() == caption) button->click();
}

QWidget& StepThrough(Tour& tour) {
    tour.Press("cmdCompile");
    for (int step = 0; step < 10; ++step) tour.Press("cmdSingleStep");
    return tour.Window;
}

QWidget& StopAtMark(Tour& tour) {
    tour.Press("cmdCompile");
    tour.Editor().ToggleMark(44);
    tour.Press("cmdRun");
    return tour.Window;
}

QWidget& TypeByte(Tour& tour) {
    tour.Press("cmdCompile");
    auto& grid = tour.Find<QTableView>("grdRAM");
    grid.setCurrentIndex(grid.model()->index(2, 3));
    QTest::keyClicks(QApplication::focusWidget(), "2a");
    return tour.Window;
}

QWidget& MakeMistake(Tour& tour) {
    tour.Editor().SetText(u"; add two numbers\r\nmvi a,12\r\nadi 3g\r\nhlt\r\n");
    tour.Press("cmdCompile");
    return tour.Window;
}

// Of two cases the first one is given, and the program has a mistake.
QWidget& JudgeRun(Tour& tour) {
    tour.Editor().SetText(
        u"; the sum of two numbers\r\nlda 9000\r\nmov b,a\r\nlda 9001\r\nsub b\r\nhlt\r\n; given 9000=0A,05\r\n"
        u"; gives A=0F, 39 T-states\r\n; given 9000=F0,20\r\n; gives A=10, CY=1\r\n");
    tour.Press("cmdCompile");
    tour.Machine->Memory[0x9000] = 0x0A;
    tour.Machine->Memory[0x9001] = 0x05;
    tour.Press("cmdRun");
    return tour.Window;
}

QWidget& StartAssistant(Tour& tour) {
    tour.Editor().SetText(u"mvi b,12\r\n");
    tour.Editor().SetSelectionStart(tour.Editor().Length());
    tour.Press("cmdCodeAssistant");
    return tour.Window;
}

QWidget& ChooseMnemonic(Tour& tour) {
    StartAssistant(tour);
    ClickKey(tour, "frmCA", "MVI");
    return tour.Window;
}

QWidget& ChooseRegister(Tour& tour) {
    ChooseMnemonic(tour);
    ClickKey(tour, "frmCA3", "A");
    return tour.Window;
}

QWidget& SaveData(Tour& tour) {
    tour.Find<QAction>("mnuSaveData").trigger();
    auto& dialog = tour.Find<QDialog>("frmSave");
    dialog.findChild<QLineEdit*>("Text1")->setText("9000");
    dialog.findChild<QLineEdit*>("Text2")->setText("90ff");
    dialog.findChild<QPushButton*>("Command1")->click();
    dialog.findChild<QLineEdit*>("Text3")->setText("numbers.dat");
    return dialog;
}

// Each picture is taken in a window of its own, so that none shows what was done for another.
bool TakeGuidePictures(const QString& program, const QString& folder) {
    struct Picture {
        const char* Name;
        std::function<QWidget&(Tour&)> Show;
    };
    const Picture pictures[] = {
        {"window", [](Tour& tour) -> QWidget& { return tour.Press("cmdCompile"), tour.Window; }},
        {"stepping", StepThrough},
        {"stopping", StopAtMark},
        {"memory-edit", TypeByte},
        {"error", MakeMistake},
        {"verdicts", JudgeRun},
        {"code-assistant", StartAssistant},
        {"register-keypad", ChooseMnemonic},
        {"hex-keypad", ChooseRegister},
        {"save-data", SaveData},
        {"about", [](Tour& tour) -> QWidget& { return tour.Splash.ShowAbout(), tour.Splash; }},
    };
    for (const Picture& picture : pictures) {
        Tour tour;
        if (!tour.Load(program)) return false;
        tour.TakePicture(picture.Show(tour), folder, picture.Name);
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    shell::Prepare(application);

    const QStringList arguments = QApplication::arguments().mid(1);
    if (arguments.size() == 3 && arguments.constFirst() == "--guide")
        return TakeGuidePictures(arguments.at(2), arguments.at(1)) ? 0 : 1;
    if (arguments.size() > 2 && arguments.constFirst() == "--pictures")
        return VisitAll(arguments.mid(2), arguments.at(1)) ? 0 : 1;
    if (!arguments.isEmpty()) return VisitAll(arguments, {}) ? 0 : 1;
    std::puts("Which programs? velmora_tour [--pictures FOLDER] PROGRAM...");
    return 2;
}
