#pragma once

#include "nav/records/QAirport.h"
#include "nav/records/QWaypoint.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QVector>

/// A source of navigation data; the one that is chosen at start-up lives as long as the program.
/// Main thread. A file of the read operations is relative to the folder, and an empty one means the
/// reader's own. A read that fails says why in a line of level 3 and gives false.
/// The search operations turn an ident to upper case and trim it; they give false and leave the
/// result as it was where nothing matches. Those in memory copy what they find and walk through
/// unsorted records: they are for single look-ups.
class NavdataBase : public QObject
{
    Q_OBJECT
public:
    explicit NavdataBase(QObject* parent = nullptr);

    virtual void setDatabaseFolder(const QString& folder);
    /// Ends with "/".
    virtual void setFolder(const QString& folder);
    virtual QString folder() const;
    virtual bool readAirports(const QString& file) = 0;
    virtual bool readAirportNames(const QString& file) = 0;
    virtual bool readWaypoints(const QString& file);
    virtual bool readNavaids(const QString& file);
    virtual QVector<QAirport> airports() const;
    virtual QVector<QWaypoint> waypoints() const;
    virtual QVector<QWaypoint> navaids() const;
    virtual bool FindAirport(const QString& ident, QAirport& airport);
    /// Appends all matches in the order of the source. The list isn't cleared first.
    virtual bool FindWaypoint(const QString& ident, QList<QWaypoint>& waypoints);
    /// The first match.
    virtual bool FindWaypoint(const QString& ident, QWaypoint& waypoint);
    virtual bool FindNavaid(const QString& ident, QList<QWaypoint>& navaids);
    virtual bool FindNavaid(const QString& ident, QWaypoint& navaid);
    /// The airport with its runways; false where they come with the airports.
    virtual bool FindRunways(const QString& ident, QAirport& airport);

    /// Appends the user's own airports ("airportsadd.dat", a full path); false if the file can't be
    /// opened.
    bool readAdditionalAirports(const QString& path);

public Q_SLOTS:
    /// Hands on the progress of what the source stands on.
    void onProgressBar(qint64 value, qint64 total, const QString& text);

Q_SIGNALS:
    /// A total of 0 ends it.
    void sigProgressBar(qint64 value, qint64 total, QString text);
    void sigDebugString(QString text, int level);

protected:
    /// The folder counts only if it is longer than 2 characters; otherwise the name stands alone.
    QString pathOf(const QString& file) const;

    QVector<QAirport> Airports;
    QVector<QWaypoint> Waypoints;
    QVector<QWaypoint> Navaids;
    QString Folder;         ///< of the files; ends with "/"
    QString DatabaseFolder; ///< of the database; ends with "/"
    QString CycleName;      ///< of the AIRAC cycle, as its file has it
    QString CycleDates;     ///< likewise
};
