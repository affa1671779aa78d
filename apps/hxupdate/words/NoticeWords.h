// The one line in which a notice is told.
#pragma once

#include "apps/hxupdate/model/UpdateModel.h"

namespace hxupdate {

QString noticeText(Notice notice, const QString& detail);

} // namespace hxupdate
