// A recorded trace as a table.
#pragma once

#include "host/trace/Trace.h"

#include <QAbstractTableModel>
#include <QCoreApplication>

namespace hxupdate {

class TraceTable final : public QAbstractTableModel {
    Q_DECLARE_TR_FUNCTIONS(TraceTable)

public:
    TraceTable(const hx::TraceEvents& events, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    enum Column { Time, What, Name, Bytes, ColumnCount };

    hx::TraceEvents m_events;
};

} // namespace hxupdate
