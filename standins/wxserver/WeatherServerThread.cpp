#include "standins/wxserver/WeatherServerThread.h"

#include "aviation/support/ScopedLock.h"

#include <QCoreApplication>
#include <QEvent>

namespace wxserver {

/// Takes the wake-up events of the server's thread.
class WeatherServerThread::Inbox : public QObject
{
public:
    Inbox(WeatherServerThread& owner, WeatherServer& server) : m_owner(owner), m_server(server) {}

private:
    void customEvent(QEvent* /*event*/) override { m_owner.runTasks(m_server); }

    WeatherServerThread& m_owner;
    WeatherServer& m_server;
};

WeatherServerThread::WeatherServerThread(const QString& dataFolder) : m_dataFolder(dataFolder)
{
    QThread::start();
    m_done.acquire();
}

WeatherServerThread::~WeatherServerThread()
{
    stop();
    invoke([](WeatherServer& server) { server.thread()->quit(); });
    wait();
    // Meets the last lock of the ended thread, which the thread sanitizer sees.
    const aviation::ScopedLock lock(m_mutex);
}

void WeatherServerThread::run()
{
    WeatherServer server(m_dataFolder);
    Inbox inbox(*this, server);
    {
        const aviation::ScopedLock lock(m_mutex);
        m_inbox = &inbox;
    }
    m_done.release();
    exec();
    const aviation::ScopedLock lock(m_mutex);
    m_inbox = nullptr;
}

void WeatherServerThread::runTasks(WeatherServer& server)
{
    std::deque<Task> tasks;
    {
        const aviation::ScopedLock lock(m_mutex);
        tasks.swap(m_tasks);
    }
    for (const Task& task : tasks) {
        task(server);
        // The results of the task are published with this lock.
        {
            const aviation::ScopedLock lock(m_mutex);
        }
        m_done.release();
    }
}

void WeatherServerThread::invoke(const Task& task)
{
    QObject* inbox = nullptr;
    {
        const aviation::ScopedLock lock(m_mutex);
        m_tasks.push_back([&task](WeatherServer& server) { task(server); });
        inbox = m_inbox;
    }
    QCoreApplication::postEvent(inbox, new QEvent(QEvent::User));
    m_done.acquire();
    const aviation::ScopedLock lock(m_mutex);
}

bool WeatherServerThread::start(quint16 port)
{
    bool started = false;
    invoke([&](WeatherServer& server) { started = server.start(port); });
    return started;
}

void WeatherServerThread::stop()
{
    invoke([](WeatherServer& server) { server.stop(); });
}

QString WeatherServerThread::url()
{
    QString url;
    invoke([&](WeatherServer& server) { url = server.url(); });
    return url;
}

quint16 WeatherServerThread::port()
{
    quint16 port = 0;
    invoke([&](WeatherServer& server) { port = server.port(); });
    return port;
}

void WeatherServerThread::addFault(const Fault& fault)
{
    invoke([&](WeatherServer& server) { server.addFault(fault); });
}

bool WeatherServerThread::addFault(const QString& text)
{
    bool added = false;
    invoke([&](WeatherServer& server) { added = server.addFault(text); });
    return added;
}

void WeatherServerThread::clearFaults(const QString& pattern)
{
    invoke([&](WeatherServer& server) { server.clearFaults(pattern); });
}

void WeatherServerThread::setInfo(const QString& key, const QString& value)
{
    invoke([&](WeatherServer& server) { server.setInfo(key, value); });
}

int WeatherServerThread::requestCount(const QString& path)
{
    int count = 0;
    invoke([&](WeatherServer& server) { count = server.requestCount(path); });
    return count;
}

std::vector<RequestRecord> WeatherServerThread::requests()
{
    std::vector<RequestRecord> requests;
    invoke([&](WeatherServer& server) { requests = server.requests(); });
    return requests;
}

} // namespace wxserver
