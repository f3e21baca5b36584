#include <QApplication>
#include <cstdlib>

#include "shell/workbench.h"

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    shell::Prepare(application);
    shell::Workbench workbench([] { std::_Exit(EXIT_SUCCESS); });
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &workbench.Window,
                     &shell::frmMain::CommitSession, Qt::DirectConnection);
    workbench.Start();
    return QApplication::exec();
}
