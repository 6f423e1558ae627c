// What must hold for every input of a fuzz target.
#pragma once

#include <cstdlib>

inline void Require(bool holds) {
  if (!holds) std::abort();
}
