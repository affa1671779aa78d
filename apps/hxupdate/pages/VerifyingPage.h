// The page that is shown while the product is asked what it holds after the update.
#pragma once

#include "apps/hxupdate/pages/Page.h"

#include <QCoreApplication>

namespace hxupdate {

class VerifyingPage final : public Page {
    Q_DECLARE_TR_FUNCTIONS(VerifyingPage)

public:
    explicit VerifyingPage(UpdateModel& model);
    void refresh() override;

private:
    QPushButton* m_stop;
};

} // namespace hxupdate
