#pragma once

#include "app/AirportListFiles.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QModelIndex>
#include <QString>

/// One of the user's lists as a table to edit. Every text may be typed; what can't be taken carries
/// a sign and the reason as tool tip, and firstFault says where.
class AirportListModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    explicit AirportListModel(airportlist::Kind kind, QObject* parent = nullptr);

    void setList(const airportlist::List& list);
    const airportlist::List& list() const { return m_list; }
    bool isChanged() const { return m_changed; }
    /// The list has been saved.
    void setUnchanged() { m_changed = false; }

    /// Adds an empty row at the end; gives its number.
    int addRow();
    /// Comments and lines that can't be read, before the row, stay in the file.
    void removeRow(int row);
    /// The first field that can't be taken, and why; an invalid index if all are good.
    QModelIndex firstFault(QString& reason) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    airportlist::Fault faultAt(int row, int field) const;
    bool isTwice(int row) const;

    airportlist::Kind m_kind;
    airportlist::List m_list;
    QHash<QString, int> m_uses; ///< how often the first fields occur
    bool m_changed = false;
};
