// The page that is shown while the image is sent.
#pragma once

#include "apps/hxupdate/pages/Page.h"

#include <QCoreApplication>

class QLabel;
class QProgressBar;

namespace hxupdate {

class UpdatingPage final : public Page {
    Q_DECLARE_TR_FUNCTIONS(UpdatingPage)

public:
    explicit UpdatingPage(UpdateModel& model);
    void refresh() override;

private:
    QString remainingText() const;

    QProgressBar* m_bar;
    QLabel* m_remaining;
    QLabel* m_doing;
    QLabel* m_asleep;
    QPushButton* m_stop;
};

} // namespace hxupdate
