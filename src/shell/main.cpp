#include <QApplication>
#include <memory>

#include "machine/code_map.h"
#include "machine/machine_state.h"
#include "platform/palette.h"
#include "platform/process.h"
#include "shell/frm_main.h"
#include "shell/frm_splash.h"

// The one machine, the one code map and the windows. The process ends in the exit sequence of the main window.
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName("velmora");
    QApplication::setDesktopFileName("velmora");
    QApplication::setWindowIcon(QIcon(":/velmora.svg"));
    QApplication::setQuitOnLastWindowClosed(false);
    platform::ApplyFixedAppearance(application);

    const auto machine = std::make_unique<m8085::MachineState>();
    const auto codeMap = std::make_unique<m8085::CodeMap>();
    shell::frmSplash splash;
    shell::frmMain window(
        *machine, *codeMap, [&splash] { splash.ShowAbout(); }, platform::EndProcess);
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &window, &shell::frmMain::mnuExit_Click,
                     Qt::DirectConnection);
    window.showMaximized();
    splash.ShowAtStart();
    return QApplication::exec();
}
