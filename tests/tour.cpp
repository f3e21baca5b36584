// Shows the main job without a screen: opens the real window, loads each program given into the editor, presses the
// real buttons, prints the end message and saves pictures of the window.
//
//   velmora_tour [--pictures FOLDER] PROGRAM...

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <cstdio>
#include <memory>

#include "machine/code_map.h"
#include "machine/machine_state.h"
#include "platform/palette.h"
#include "platform/program_text.h"
#include "shell/frm_main.h"

namespace {

// A window with a machine of its own.
struct Workbench {
    std::unique_ptr<m8085::MachineState> machine = std::make_unique<m8085::MachineState>();
    std::unique_ptr<m8085::CodeMap> codeMap = std::make_unique<m8085::CodeMap>();
    shell::frmMain window{*machine, *codeMap, [] {}, [] {}};

    template <class Control>
    Control& Find(const char* name) {
        return *window.findChild<Control*>(name);
    }
};

// Presses a button and closes every message box that comes of it. Returns the text of the last one.
QString Press(Workbench& bench, const char* button) {
    QString message;
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, [&message] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            message = box->text();
            box->accept();
        }
    });
    closer.start(0);
    bench.Find<QPushButton>(button).click();
    return message;
}

bool Visit(Workbench& bench, const QString& path, const QString& pictures) {
    const QString name = QFileInfo(path).completeBaseName();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::printf("%s: cannot be read\n", qPrintable(name));
        return false;
    }
    bench.Find<platform::ProgramText>("txtCode").SetText(QString::fromUtf8(file.readAll()).toStdU16String());
    const QString failure = Press(bench, "cmdCompile");
    const QString message = failure.isEmpty() ? Press(bench, "cmdRun") : failure;
    std::printf("%s: %s\n", qPrintable(name), qPrintable(message));
    if (!pictures.isEmpty()) bench.window.grab().save(QDir(pictures).filePath(name + ".png"));
    return failure.isEmpty();
}

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    platform::ApplyFixedAppearance(application);

    QStringList programs = QApplication::arguments().mid(1);
    QString pictures;
    if (programs.size() > 1 && programs.constFirst() == "--pictures") {
        pictures = programs.at(1);
        programs = programs.mid(2);
    }
    if (programs.isEmpty()) {
        std::puts("Which programs? velmora_tour [--pictures FOLDER] PROGRAM...");
        return 2;
    }

    Workbench bench;
    bench.window.resize(1024, 700);
    bench.window.show();
    bool allAssembled = true;
    for (const QString& path : programs) allAssembled = Visit(bench, path, pictures) && allAssembled;
    return allAssembled ? 0 : 1;
}
