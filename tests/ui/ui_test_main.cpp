// The window tests need one QApplication for the whole run; without a
// display they use Qt's offscreen platform.
#include <gtest/gtest.h>

#include <QApplication>


int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
