#include "standins/wxserver/ServerProgram.h"

#include <QCoreApplication>

#include <iostream>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    return wxserver::runServer(QCoreApplication::arguments().mid(1), std::cin, std::cout,
                               std::cerr);
}
