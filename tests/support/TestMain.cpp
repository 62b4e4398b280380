#include <QCoreApplication>

#include <gtest/gtest.h>

#include <clocale>

/// Takes the locale of the environment, as a desktop program does, so that the run with a decimal
/// comma really has one.
int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    QCoreApplication application(argc, argv);
    std::setlocale(LC_ALL, "");
    return RUN_ALL_TESTS();
}
