#include <gtest/gtest.h>

#include <QApplication>

#include "platform/palette.h"

// Window tests run without a screen, each with the appearance that the program has.
int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    platform::ApplyFixedAppearance(application);
    return RUN_ALL_TESTS();
}
