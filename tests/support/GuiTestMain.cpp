#include <QApplication>

#include <gtest/gtest.h>

#include <clocale>

/// As TestMain, with an application that has windows; they are drawn offscreen.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    std::setlocale(LC_ALL, "");
    return RUN_ALL_TESTS();
}
