// The end of standard input as a sign to stop.
#pragma once

namespace hx::host {

// From now on the program stops, as at Ctrl-C, when standard input ends: a program that started it
// and was killed has closed the other end. What has not stopped some seconds later is cut off. What
// is read is lost. Once only.
void stopAtEndOfInput();

} // namespace hx::host
