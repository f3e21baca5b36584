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
#include <QHelpEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
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

    // With the menu or the tooltip that is open over it.
    void TakePicture(QWidget& widget, const QString& folder, const QString& name) {
        QCoreApplication::processEvents();
        QWidgetList shown{&widget};
        for (QWidget* other : QApplication::topLevelWidgets())
            if (other->isVisible() && (other->windowType() == Qt::Popup || other->windowType() == Qt::ToolTip))
                shown += other;
        QRect place;
        for (const QWidget* each : shown) place |= each->geometry();
        QPixmap picture(place.size());
        picture.fill(Qt::white);
        QPainter painter(&picture);
        for (QWidget* each : shown) painter.drawPixmap(each->geometry().topLeft() - place.topLeft(), each->grab());
        painter.end();
        for (QWidget* other : shown.sliced(1)) other->hide();

        const QString path = QDir(folder).filePath(name + ".png");
        if (picture.save(path)) return;
        std::printf("%s cannot be written\n", qPrintable(path));
        std::exit(1);
    }
};

void RestMouse(QWidget& control, const QPoint& place) {
    QHelpEvent rest(QEvent::ToolTip, place, control.mapToGlobal(place));
    QApplication::sendEvent(&control, &rest);
}

void ClickRight(QWidget& control, const QPoint& place) {
    QContextMenuEvent click(QContextMenuEvent::Mouse, place, control.mapToGlobal(place));
    QApplication::sendEvent(&control, &click);
}

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

QWidget& StepBack(Tour& tour) {
    StepThrough(tour);
    tour.Find<QAction>("mnuStepBack").trigger();
    return tour.Window;
}

QWidget& StepInSmallWindow(Tour& tour) {
    tour.Window.resize(480, 300);
    return StepThrough(tour);
}

// Where the right end of a word of the program is, in pixels; the word is scrolled into view.
QPoint PlaceOf(Tour& tour, const QString& word) {
    auto& editor = tour.Editor();
    const auto exactly = QTextDocument::FindCaseSensitively | QTextDocument::FindWholeWords;
    QTextCursor found = editor.document()->find(word, 0, exactly);
    editor.SelectLine(found.blockNumber() + 1);
    editor.ClearSelection();
    return editor.cursorRect(found).center();
}

QWidget& ExplainWord(Tour& tour) {
    tour.Press("cmdCompile");
    constexpr QPoint toLastLetter(-4, 0);
    RestMouse(*tour.Editor().viewport(), PlaceOf(tour, "CMP") + toLastLetter);
    return tour.Window;
}

QWidget& OpenEditorMenu(Tour& tour) {
    StepThrough(tour);
    ClickRight(*tour.Editor().viewport(), PlaceOf(tour, "LXI"));
    return tour.Window;
}

QWidget& OpenByteMenu(Tour& tour) {
    tour.Press("cmdCompile");
    auto& grid = tour.Find<QTableView>("grdRAM");
    grid.setCurrentIndex(grid.model()->index(2, 1));
    auto& byte = tour.Find<QLineEdit>("txtEdit");
    ClickRight(byte, byte.rect().center());
    return tour.Window;
}

QWidget& LookAtByteThatIsPointedTo(Tour& tour) {
    StepThrough(tour);
    auto& grid = tour.Find<QTableView>("grdRAM");
    RestMouse(*grid.viewport(), grid.visualRect(grid.model()->index(tour.Machine->L, 3)).center());
    return tour.Window;
}

QWidget& LookAtStack(Tour& tour) {
    tour.Editor().SetText(u"lxi b,1234\r\npush b\r\ncall sub\r\nhlt\r\nsub:\r\nret\r\n");
    tour.Press("cmdCompile");
    for (int step = 0; step < 3; ++step) tour.Press("cmdSingleStep");
    auto& stackPointer = tour.Find<QLineEdit>("txtSP");
    RestMouse(stackPointer, stackPointer.rect().center());
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
        {"step-back", StepBack},
        {"small-window", StepInSmallWindow},
        {"tooltip", ExplainWord},
        {"editor-menu", OpenEditorMenu},
        {"byte-menu", OpenByteMenu},
        {"pointer", LookAtByteThatIsPointedTo},
        {"stack", LookAtStack},
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
