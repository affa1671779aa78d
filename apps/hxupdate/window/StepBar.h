// The steps of an update, and which of them is shown.
#pragma once

#include "apps/hxupdate/model/UpdateModel.h"

#include <QCoreApplication>
#include <QLabel>

namespace hxupdate {

class StepBar final : public QLabel {
    Q_DECLARE_TR_FUNCTIONS(StepBar)

public:
    StepBar();
    void show(Step step);
};

} // namespace hxupdate
