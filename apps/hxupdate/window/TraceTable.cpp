#include "apps/hxupdate/window/TraceTable.h"

#include "host/base/HexText.h"

#include <QLocale>

namespace hxupdate {

namespace {

constexpr double microsecondsASecond = 1e6;

} // namespace

TraceTable::TraceTable(const hx::TraceEvents& events, QObject* parent)
    : QAbstractTableModel(parent), m_events(events)
{
}

int TraceTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_events.size());
}

int TraceTable::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant TraceTable::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    const hx::TraceEvent& event = m_events.at(size_t(index.row()));
    switch (index.column()) {
    case Time:
        return QLocale().toString(double(event.event.time) / microsecondsASecond, 'f', 6);
    case What:
        return hx::busEventWord(event.event.kind);
    case Name:
        return event.name;
    default:
        return event.event.bytes.isEmpty() ? event.event.text : hx::hexText(event.event.bytes);
    }
}

QVariant TraceTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case Time:
        return tr("Seconds");
    case What:
        return tr("Event");
    case Name:
        return tr("Message");
    default:
        return tr("Bytes or text");
    }
}

} // namespace hxupdate
