// Runs what may crash, or never return, in a process of its own.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace hx {

using SendLine = std::function<void(const QByteArray& line)>;

// Runs `work` in a child process; each line that it sends, not an empty one, arrives at `receive`
// at once. The child is ended when it sends nothing for so many seconds. The text is how it ended
// when that was not the end of its work, such as "it crashed (Segmentation fault)", else empty.
// Throws std::runtime_error when the system has no process or pipe to give.
QString runSeparately(const std::function<void(const SendLine&)>& work, const SendLine& receive,
                      unsigned seconds);

} // namespace hx
