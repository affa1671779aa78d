// What to do, step by step, each with its number.
#pragma once

#include <QStringList>
#include <QVBoxLayout>
#include <QWidget>

namespace hxupdate {

class StepList final : public QWidget {
public:
    StepList();

    void show(const QStringList& steps);

private:
    QVBoxLayout* m_rows;
    QStringList m_steps;
};

} // namespace hxupdate
