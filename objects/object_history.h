// What a step changes of static objects, entities and spawn groups: the records that differ, as
// they were before the step. Whoever changes them opens an ObjectStep first.
#pragma once

#include <string_view>

#include "core/history.h"

namespace mw {

// For the open step: the tables as they are now. Only what differs when the step ends is kept.
// Nothing happens while no step is open.
void KeepObjects();

// A gesture that changes objects or entities.
class ObjectStep {
 public:
  explicit ObjectStep(std::string_view name) : step_(name) { KeepObjects(); }

 private:
  HistoryStep step_;
};

}  // namespace mw
