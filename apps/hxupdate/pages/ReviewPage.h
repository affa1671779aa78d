// The page that says what will be done, before anything is sent.
#pragma once

#include "apps/hxupdate/pages/Page.h"

#include <QCoreApplication>

namespace hxupdate {

class FactList;

class ReviewPage final : public Page {
    Q_DECLARE_TR_FUNCTIONS(ReviewPage)

public:
    explicit ReviewPage(UpdateModel& model);
    void refresh() override;

private:
    void showFacts();

    FactList* m_facts;
    QPushButton* m_back;
    QPushButton* m_start;
};

} // namespace hxupdate
