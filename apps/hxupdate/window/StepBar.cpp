#include "apps/hxupdate/window/StepBar.h"

namespace hxupdate {

StepBar::StepBar()
{
    setObjectName(QStringLiteral("stepBar"));
    setTextFormat(Qt::RichText);
    setWordWrap(true);
}

void StepBar::show(Step step)
{
    QStringList names = {tr("Connect"),  tr("Choose image"), tr("Review"),
                         tr("Updating"), tr("Verifying"),    tr("Verdict")};
    const int number = int(step);
    setAccessibleName(
        tr("Step %1 of %2: %3")
            .arg(QString::number(number + 1), QString::number(names.size()), names.at(number)));
    names[number] = QStringLiteral("<b>%1</b>").arg(names.at(number));
    setText(names.join(QStringLiteral(" \u203A ")));
}

} // namespace hxupdate
