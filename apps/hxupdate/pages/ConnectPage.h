// The page on which the product is looked for.
#pragma once

#include "apps/hxupdate/pages/Page.h"
#include "apps/hxupdate/parts/FactList.h"

#include <QCoreApplication>

namespace hxupdate {

class ConnectPage final : public Page {
    Q_DECLARE_TR_FUNCTIONS(ConnectPage)

public:
    explicit ConnectPage(UpdateModel& model);
    void refresh() override;

private:
    void showFacts();
    Facts factsOf(const ProductFacts& product) const;

    FactList* m_facts;
    QPushButton* m_otherPort;
    QPushButton* m_continue;
};

} // namespace hxupdate
