// What a user does with a level's objects and entities, told step by step for a golden file: the
// boxes and status texts of each step, and what it changed of all records, tree items and switches.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

#include "core/vector3.h"

namespace mw {

std::ostream& operator<<(std::ostream& out, const Vector3& v);

class LevelStory {
 public:
  // Every message box is answered with OK.
  void Do(std::string_view step, const std::function<void()>& act);
  // As tests/golden/objects/<name>.txt has it.
  void Expect(const std::string& name) const;

 private:
  std::string told_;
};

}  // namespace mw
