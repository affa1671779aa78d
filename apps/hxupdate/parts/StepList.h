// What to do, step by step, each with its number.
#pragma once

#include <QVBoxLayout>
#include <QWidget>

namespace hxupdate {

class StepList final : public QWidget {
public:
    StepList();

    void show(const QStringList& steps);

private:
    QVBoxLayout* m_rows;
};

} // namespace hxupdate
