#include "app/gui/dialogs/AirportListModel.h"

#include "gui/Icons.h"

using airportlist::Fault;
using airportlist::Kind;

namespace {

QString faultText(Fault fault)
{
    switch (fault) {
    case Fault::IcaoForm:
        return AirportListModel::tr("An ICAO code has three or four letters or digits.");
    case Fault::IcaoTwice:
        return AirportListModel::tr("Another row has this ICAO code.");
    case Fault::SamePair:
        return AirportListModel::tr("The old and the new ICAO code are the same.");
    case Fault::Separator:
        return AirportListModel::tr("A name or country can not hold \";\" or line breaks.");
    case Fault::ElevationForm:
        return AirportListModel::tr("An elevation is a number from -2000 to 30000 feet.");
    case Fault::LatitudeRange:
        return AirportListModel::tr("A latitude is a number from -90 to 90 degrees.");
    case Fault::LongitudeRange:
        return AirportListModel::tr("A longitude is a number from -180 to 180 degrees.");
    case Fault::NoPosition:
        return AirportListModel::tr("The position 0, 0 means unknown.");
    case Fault::None:
        break;
    }
    return QString();
}

QStringList headersOf(Kind kind)
{
    if (kind == Kind::OldIcaos) {
        return {AirportListModel::tr("Old ICAO"), AirportListModel::tr("New ICAO")};
    }
    return {AirportListModel::tr("ICAO"),     AirportListModel::tr("Name"),
            AirportListModel::tr("Country"),  AirportListModel::tr("Elevation (ft)"),
            AirportListModel::tr("Latitude"), AirportListModel::tr("Longitude")};
}

} // namespace

AirportListModel::AirportListModel(Kind kind, QObject* parent)
    : QAbstractTableModel(parent)
    , m_kind(kind)
{}

void AirportListModel::setList(const airportlist::List& list)
{
    beginResetModel();
    m_list = list;
    m_uses.clear();
    for (const airportlist::Row& row : m_list.rows) {
        ++m_uses[row.fields.first()];
    }
    m_changed = false;
    endResetModel();
}

int AirportListModel::addRow()
{
    const int row = m_list.rows.size();
    beginInsertRows({}, row, row);
    airportlist::Row fresh;
    for (int field = 0; field < columnCount(); ++field) {
        fresh.fields << QString();
    }
    fresh.before.swap(m_list.after);
    m_list.rows.push_back(fresh);
    ++m_uses[QString()];
    m_changed = true;
    endInsertRows();
    return row;
}

void AirportListModel::removeRow(int row)
{
    beginRemoveRows({}, row, row);
    const airportlist::Row gone = m_list.rows.takeAt(row);
    --m_uses[gone.fields.first()];
    QStringList& next = row < m_list.rows.size() ? m_list.rows[row].before : m_list.after;
    next = gone.before + next;
    m_changed = true;
    endRemoveRows();
}

bool AirportListModel::isTwice(int row) const
{
    return m_uses.value(m_list.rows.at(row).fields.first()) > 1;
}

Fault AirportListModel::faultAt(int row, int field) const
{
    const Fault fault = airportlist::fieldFault(m_kind, m_list.rows.at(row).fields, field);
    return fault == Fault::None && field == 0 && isTwice(row) ? Fault::IcaoTwice : fault;
}

QModelIndex AirportListModel::firstFault(QString& reason) const
{
    for (int row = 0; row < rowCount(); ++row) {
        for (int field = 0; field < columnCount(); ++field) {
            const Fault fault = faultAt(row, field);
            if (fault != Fault::None) {
                reason = faultText(fault);
                return index(row, field);
            }
        }
    }
    return {};
}

int AirportListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_list.rows.size();
}

int AirportListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : headersOf(m_kind).size();
}

QVariant AirportListModel::data(const QModelIndex& index, int role) const
{
    if (role == Qt::DisplayRole || role == Qt::EditRole) {
        return m_list.rows.at(index.row()).fields.at(index.column());
    }
    const bool isNumber = m_kind == Kind::Airports && index.column() >= airportlist::kElevation;
    if (role == Qt::TextAlignmentRole && isNumber) {
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    }
    if (role != Qt::DecorationRole && role != Qt::ToolTipRole) {
        return QVariant();
    }
    const Fault fault = faultAt(index.row(), index.column());
    if (fault == Fault::None) {
        return QVariant();
    }
    return role == Qt::ToolTipRole ? QVariant(faultText(fault))
                                   : QVariant(Icons::appIcon(Icons::Name::Error));
}

bool AirportListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::EditRole) {
        return false;
    }
    QString& field = m_list.rows[index.row()].fields[index.column()];
    const QString text = airportlist::normalized(m_kind, index.column(), value.toString());
    if (text == field) {
        return true;
    }
    if (index.column() == 0) {
        --m_uses[field];
        ++m_uses[text];
    }
    field = text;
    m_changed = true;
    // Codes that were twice and positions of two fields change signs elsewhere too.
    Q_EMIT dataChanged(this->index(0, 0), this->index(rowCount() - 1, columnCount() - 1));
    return true;
}

QVariant AirportListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole) {
        return QVariant();
    }
    return orientation == Qt::Horizontal ? QVariant(headersOf(m_kind).at(section))
                                         : QVariant(section + 1);
}

Qt::ItemFlags AirportListModel::flags(const QModelIndex& index) const
{
    return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
}
