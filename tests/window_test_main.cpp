#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#include "shell/workbench.h"

// Window tests run without a screen, with the appearance that the program has and with settings of their own.
int main(int argc, char** argv) {
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    shell::Prepare(application);
    return RUN_ALL_TESTS();
}
