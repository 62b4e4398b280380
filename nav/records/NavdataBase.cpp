#include "nav/records/NavdataBase.h"

#include "nav/records/AirportTable.h"

#include <QFile>

#include <algorithm>
#include <iterator>

namespace {

QString searchedIdent(const QString& ident)
{
    return ident.toUpper().trimmed();
}

template <typename Record>
bool findFirst(const QVector<Record>& records, const QString& ident, Record& result)
{
    const QString searched = searchedIdent(ident);
    const auto found = std::find_if(records.begin(), records.end(),
                                    [&](const Record& record) { return record.Ident == searched; });
    if (found == records.end()) {
        return false;
    }
    result = *found;
    return true;
}

bool findAll(const QVector<QWaypoint>& records, const QString& ident, QList<QWaypoint>& results)
{
    const QString searched = searchedIdent(ident);
    const int before = results.size();
    std::copy_if(records.begin(), records.end(), std::back_inserter(results),
                 [&](const QWaypoint& record) { return record.Ident == searched; });
    return results.size() > before;
}

} // namespace

NavdataBase::NavdataBase(QObject* parent) : QObject(parent) {}

void NavdataBase::setDatabaseFolder(const QString& folder)
{
    DatabaseFolder = folder;
}

void NavdataBase::setFolder(const QString& folder)
{
    Folder = folder;
}

QString NavdataBase::folder() const
{
    return Folder;
}

QString NavdataBase::pathOf(const QString& file) const
{
    constexpr int kNoFolder = 2; // characters; a path that isn't set arrives as "/"
    return Folder.size() > kNoFolder ? Folder + file : file;
}

bool NavdataBase::readWaypoints(const QString& /*file*/)
{
    return false;
}

bool NavdataBase::readNavaids(const QString& /*file*/)
{
    return false;
}

QVector<QAirport> NavdataBase::airports() const
{
    return Airports;
}

QVector<QWaypoint> NavdataBase::waypoints() const
{
    return Waypoints;
}

QVector<QWaypoint> NavdataBase::navaids() const
{
    return Navaids;
}

bool NavdataBase::FindAirport(const QString& ident, QAirport& airport)
{
    return findFirst(Airports, ident, airport);
}

bool NavdataBase::FindWaypoint(const QString& ident, QList<QWaypoint>& waypoints)
{
    return findAll(Waypoints, ident, waypoints);
}

bool NavdataBase::FindWaypoint(const QString& ident, QWaypoint& waypoint)
{
    return findFirst(Waypoints, ident, waypoint);
}

bool NavdataBase::FindNavaid(const QString& ident, QList<QWaypoint>& navaids)
{
    return findAll(Navaids, ident, navaids);
}

bool NavdataBase::FindNavaid(const QString& ident, QWaypoint& navaid)
{
    return findFirst(Navaids, ident, navaid);
}

bool NavdataBase::FindRunways(const QString& /*ident*/, QAirport& /*airport*/)
{
    return false;
}

bool NavdataBase::readAdditionalAirports(const QString& path)
{
    constexpr qint64 kLargestFile = 16LL * 1024 * 1024;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    Airports += parseAdditionalAirports(file.read(kLargestFile));
    return true;
}

void NavdataBase::onProgressBar(qint64 value, qint64 total, const QString& text)
{
    Q_EMIT sigProgressBar(value, total, text);
}
