// Tells the window library when the program waits for a process it has started: its windows stay
// alive then, but nothing is to be drawn by itself.
#pragma once

#include <functional>

namespace mw {

// Called with true at the beginning and with false at the end of each wait. Waits may nest.
using ProcessWaitObserver = std::function<void(bool waiting)>;
void ObserveProcessWaits(ProcessWaitObserver observer);

}  // namespace mw
