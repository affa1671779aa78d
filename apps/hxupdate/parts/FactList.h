// Names and values, one pair a row.
#pragma once

#include <QGridLayout>
#include <QPair>
#include <QWidget>

namespace hxupdate {

using Facts = QList<QPair<QString, QString>>;

class FactList final : public QWidget {
public:
    FactList();

    void show(const Facts& facts);

private:
    QGridLayout* m_rows;
    Facts m_facts;
};

} // namespace hxupdate
