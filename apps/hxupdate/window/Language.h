// The language of the program's texts.
#pragma once

#include <QLocale>

class QCoreApplication;

namespace hxupdate {

// From now on texts are in the language of `locale`, as far as it is one of ours, else in English;
// numbers are by `locale`.
void speak(QCoreApplication& application, const QLocale& locale);

} // namespace hxupdate
