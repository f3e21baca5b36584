#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

#include "shell/workbench.h"
#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace {

void UseSettingsOf(const QTemporaryDir& folder) {
#ifdef Q_OS_WIN
    const QString name = "Software/" + folder.path().section('/', -1);
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, QDir::toNativeSeparators(name).toStdWString().c_str(), 0, nullptr,
                    REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    RegOverridePredefKey(HKEY_CURRENT_USER, key);
#else
    qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
#endif
}

}  // namespace

// Window tests run without a screen, with the appearance that the program has and with settings of their own.
int main(int argc, char** argv) {
    const QTemporaryDir settings;
    UseSettingsOf(settings);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    shell::Prepare(application);
    return RUN_ALL_TESTS();
}
