// Asks which port the product is on.
#pragma once

#include <QStringList>

#include <functional>

class QWidget;

namespace hxupdate {

void choosePortOf(QWidget* parent, const QStringList& ports,
                  const std::function<void(const QString&)>& chosen);

} // namespace hxupdate
