#include <gtest/gtest.h>

#include <QApplication>
#include <QFileInfo>
#include <QTemporaryDir>

#include "shell/workbench.h"
#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace {

// A place for settings that goes with the folder.
class OwnSettings {
#ifdef Q_OS_WIN
public:
    explicit OwnSettings(const QTemporaryDir& folder) : name_(QFileInfo(folder.path()).fileName().toStdWString()) {
        RegCreateKeyW(HKEY_CURRENT_USER, name_.c_str(), &key_);
        RegOverridePredefKey(HKEY_CURRENT_USER, key_);
    }
    ~OwnSettings() {
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegDeleteTreeW(HKEY_CURRENT_USER, name_.c_str());
    }

private:
    std::wstring name_;
    HKEY key_ = nullptr;
#else
public:
    explicit OwnSettings(const QTemporaryDir& folder) {
        qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
    }
#endif
};

}  // namespace

// Window tests run without a screen, with the appearance that the program has and with settings of their own.
int main(int argc, char** argv) {
    const QTemporaryDir folder;
    const OwnSettings settings(folder);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    shell::Prepare(application);
    return RUN_ALL_TESTS();
}
