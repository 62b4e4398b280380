#include "standins/simulator/SimulatorThread.h"

#include "aviation/support/ScopedLock.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>

#include <future>
#include <memory>

namespace simulator {

namespace {

constexpr int kPollMs = 2;

/// Ends the wait of another thread. Shared: the waiter may be gone before set_value() has returned.
using Done = std::shared_ptr<std::promise<void>>;

} // namespace

SimulatorThread::SimulatorThread(const SimulatorOptions& options, SimulatedFlight flight,
                                 QObject* parent)
    : SimulatorThread(
        [options, flight = std::move(flight)] {
            return std::make_unique<SimulatorServer>(options, flight);
        },
        parent)
{}

SimulatorThread::SimulatorThread(const SimulatorOptions& options, SimulatorModel& model,
                                 QObject* parent)
    : SimulatorThread(
        [options, &model] { return std::make_unique<SimulatorServer>(options, model); }, parent)
{}

SimulatorThread::SimulatorThread(const Maker& makeServer, QObject* parent) : QObject(parent)
{
    const Done ready = std::make_shared<std::promise<void>>();
    m_thread = std::thread(
        [this, makeServer, ready] { run(makeServer, [ready] { ready->set_value(); }); });
    ready->get_future().wait();
}

SimulatorThread::~SimulatorThread()
{
    invoke([](SimulatorServer& server) {
        server.stop();
        server.thread()->quit();
    });
    m_thread.join();
}

void SimulatorThread::run(const Maker& makeServer, const std::function<void()>& isReady)
{
    QEventLoop loop;
    const std::unique_ptr<SimulatorServer> server = makeServer();
    connect(server.get(), &SimulatorServer::messageReceived, this,
            &SimulatorThread::messageReceived, Qt::DirectConnection);
    connect(server.get(), &SimulatorServer::line, this, &SimulatorThread::line,
            Qt::DirectConnection);
    connect(server.get(), &SimulatorServer::weatherSet, this, &SimulatorThread::weatherSet,
            Qt::DirectConnection);
    QTimer poll;
    connect(&poll, &QTimer::timeout, server.get(), [this] { runPosted(); });
    poll.start(kPollMs);
    m_server = server.get();
    isReady();
    loop.exec();
}

void SimulatorThread::runPosted()
{
    std::deque<std::function<void()>> posted;
    {
        const aviation::ScopedLock lock(m_mutex);
        posted.swap(m_posted);
    }
    for (const std::function<void()>& function : posted) {
        function();
    }
}

quint16 SimulatorThread::startServer()
{
    bool listens = false;
    invoke([this, &listens](SimulatorServer& server) {
        listens = server.start();
        m_port = server.port();
    });
    return listens ? m_port : 0;
}

void SimulatorThread::stopServer()
{
    invoke([](SimulatorServer& server) { server.stop(); });
}

void SimulatorThread::invoke(const std::function<void(SimulatorServer&)>& function)
{
    const Done done = std::make_shared<std::promise<void>>();
    {
        const aviation::ScopedLock lock(m_mutex);
        m_posted.push_back([this, &function, done] {
            function(*m_server);
            done->set_value();
        });
    }
    done->get_future().wait();
}

bool SimulatorThread::setFault(const QString& fault)
{
    const std::optional<Fault> parsed = parseFault(fault);
    if (parsed) {
        invoke([&parsed](SimulatorServer& server) { server.setFault(*parsed); });
    }
    return parsed.has_value();
}

void SimulatorThread::closeConnections()
{
    invoke([](SimulatorServer& server) { server.closeConnections(); });
}

bool SimulatorThread::waitUntil(const std::function<bool()>& condition, int timeoutMs)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > timeoutMs) {
            return false;
        }
        constexpr int kSliceMs = 5;
        QCoreApplication::processEvents(QEventLoop::AllEvents, kSliceMs);
        QThread::msleep(1); // real time: the process's clock may stand still
    }
    return true;
}

} // namespace simulator
