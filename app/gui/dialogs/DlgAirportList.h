#pragma once

#include "app/AirportListFiles.h"

#include <QDialog>
#include <QString>

class AirportListModel;
class NoteLabel;
class QTableView;
class QTabWidget;

/// The user's own airports ("airportsadd.dat") and renamed ICAO codes ("icaosoldnew.dat") of the
/// work folder. Comments and lines that can't be read stay in the files. Main thread.
class DlgAirportList : public QDialog
{
    Q_OBJECT
public:
    explicit DlgAirportList(const QString& workFolder, QWidget* parent = nullptr);

    /// Writes the lists that were changed. False if one can't be: the place comes up with the
    /// reason.
    bool save();
    /// Asks before changes are thrown away.
    void reject() override;

public Q_SLOTS:
    void OnReadOldIcaos();
    void OnWriteOldIcaos();
    void onReadAirports();
    void onWriteAirports();

Q_SIGNALS:
    /// A file was written, so what was read from it is out of date.
    void sigAirportsChanged();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Page
    {
        airportlist::Kind kind = airportlist::Kind::Airports;
        AirportListModel* model = nullptr;
        QTableView* table = nullptr;
        bool readable = false; ///< the file was read; otherwise it isn't overwritten
    };

    QWidget* buildPage(Page& page, const QString& name, const QString& hint);
    void read(Page& page);
    bool write(Page& page);
    bool writeFile(Page& page);
    void addRow(const Page& page);
    void editRow(const Page& page);
    void removeRows(const Page& page);
    QString pathOf(const Page& page) const;

    QString m_workFolder;
    Page m_airports{airportlist::Kind::Airports};
    Page m_icaos{airportlist::Kind::OldIcaos};
    QTabWidget* m_tabs;
    NoteLabel* m_note;
};
