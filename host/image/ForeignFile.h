// Files that people take for an update image because they came from where one was promised.
#pragma once

#include "host/image/ImageFile.h"

namespace hx {

// WebPage or Archive by the first bytes of the content; Unknown for anything else.
ImageFormat foreignFormat(const QByteArray& content);

} // namespace hx
