#include "aviation/support/ScopedLock.h"
#include "standins/simulator/Console.h"
#include "standins/simulator/SimulatorServer.h"

#include <QCoreApplication>
#include <QTimer>

#include <deque>
#include <iostream>
#include <memory>
#include <string>
#include <thread>

namespace {

using simulator::SimulatorOptions;
using simulator::SimulatorServer;

constexpr int kWrongArguments = 2;
constexpr int kCannotListen = 1;
constexpr int kInputPollMs = 100;

void print(const QString& line)
{
    std::cout << line.toStdString() << std::endl; // flushed: others wait for a line
}

/// Lines of standard input. The thread that reads them can't be woken, so it is left behind at the
/// end of the program and shares this with nobody else.
struct Input
{
    QMutex mutex;
    std::deque<std::string> lines; ///< guarded by mutex
};

void readInput(const std::shared_ptr<Input>& input)
{
    std::string line;
    while (std::getline(std::cin, line)) {
        const aviation::ScopedLock lock(input->mutex);
        input->lines.push_back(line);
    }
}

void runInput(Input& input, SimulatorServer& server)
{
    std::deque<std::string> lines;
    {
        const aviation::ScopedLock lock(input.mutex);
        lines.swap(input.lines);
    }
    for (const std::string& line : lines) {
        const QString answer = simulator::runConsoleLine(server, QString::fromStdString(line));
        if (answer.isEmpty()) {
            QCoreApplication::quit();
            return;
        }
        print(answer);
    }
}

int serve(const SimulatorOptions& options, simulator::SimulatedFlight flight)
{
    SimulatorServer server(options, std::move(flight));
    if (!options.quiet) {
        QObject::connect(&server, &SimulatorServer::line, &print);
    }
    if (!server.start()) {
        std::cerr << "can't listen on port " << options.port << std::endl;
        return kCannotListen;
    }
    print(QStringLiteral("listening on 127.0.0.1:%1").arg(server.port()));
    const auto input = std::make_shared<Input>();
    std::thread(readInput, input).detach();
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &server, [&] { runInput(*input, server); });
    poll.start(kInputPollMs);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QString error;
    const auto options = simulator::parseOptions(QCoreApplication::arguments().mid(1), &error);
    if (options && options->help) {
        print(simulator::optionsHelp());
        return 0;
    }
    auto flight = options ? simulator::makeFlight(*options, &error) : std::nullopt;
    if (!flight) {
        std::cerr << error.toStdString() << "\nsee cirrilon-simulator --help" << std::endl;
        return kWrongArguments;
    }
    return serve(*options, std::move(*flight));
}
