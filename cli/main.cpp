#include "cli/Cli.h"

#include <QCoreApplication>

#include <iostream>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    std::ios::sync_with_stdio(false);
    return runCli(QCoreApplication::arguments().mid(1), std::cin, std::cout, std::cerr);
}
