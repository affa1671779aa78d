// The page that says how the update has ended, and what to do next.
#pragma once

#include "apps/hxupdate/pages/Page.h"

#include <QCoreApplication>

class QLabel;

namespace hxupdate {

class FactList;

class VerdictPage final : public Page {
    Q_DECLARE_TR_FUNCTIONS(VerdictPage)

public:
    VerdictPage(UpdateModel& model, const std::function<void()>& close);
    void refresh() override;

private:
    void showFacts();

    QLabel* m_mark;
    FactList* m_facts;
    QPushButton* m_close;
    QPushButton* m_save;
    QPushButton* m_again;
};

} // namespace hxupdate
