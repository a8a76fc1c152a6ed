#include <QStandardPaths>
#include <gtest/gtest.h>

#ifdef QUORBIN_TEST_WIDGETS
// Window tests run under the suite's own application object, guard included.
#include "frame/ui/GuardedApplication.h"
using TestApplication = Frame::GuardedApplication;
#else
#include <QGuiApplication>
using TestApplication = QGuiApplication;
#endif

int main(int argc, char** argv)
{
    // Headless unless the caller asked for a real display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Settings the windows keep (toolbar layouts) go to a test folder, never the user's own.
    QStandardPaths::setTestModeEnabled(true);
    testing::InitGoogleTest(&argc, argv);
    TestApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
