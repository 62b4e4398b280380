#include <QApplication>

#include <gtest/gtest.h>

#include <clocale>

/// The offscreen platform never frees its screen; asked for by the leak sanitizer, unused without.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:QScreen::QScreen\nleak:libqoffscreen.so\n";
}

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
