// Asks for the file to open or to save; remembers the last folder, and nothing else.
#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace hxupdate {

using PathChosen = std::function<void(const QString&)>;

void chooseImageFile(QWidget* parent, const PathChosen& chosen);
void chooseRecordFile(QWidget* parent, const PathChosen& chosen);

} // namespace hxupdate
