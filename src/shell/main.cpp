#include <QApplication>
#include <QSessionManager>
#include <cstdlib>

#include "shell/workbench.h"

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    shell::Prepare(application);
    shell::Workbench workbench([] { std::_Exit(EXIT_SUCCESS); });
    const auto commitSession = [&workbench](QSessionManager& manager) {
        const bool mayAsk = manager.allowsInteraction();
        workbench.Window.CommitSession(mayAsk);
        if (mayAsk) manager.release();
    };
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &workbench.Window, commitSession,
                     Qt::DirectConnection);
    workbench.Start();
    return QApplication::exec();
}
