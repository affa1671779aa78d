// The page on which the product is looked for.
#pragma once

#include "apps/hxupdate/pages/Page.h"

#include <QCoreApplication>

namespace hxupdate {

class FactList;

class ConnectPage final : public Page {
    Q_DECLARE_TR_FUNCTIONS(ConnectPage)

public:
    explicit ConnectPage(UpdateModel& model);
    void refresh() override;

private:
    void choosePort();
    void showFacts();

    FactList* m_facts;
    QPushButton* m_otherPort;
    QPushButton* m_continue;
};

} // namespace hxupdate
