#include "core/plain_numbers.h"

#include <cstring>
#include <locale.h>
#include <string>

namespace mw {
namespace {

// What the thread had before: its locale, and whether that was its own.
struct LocaleBefore {
  int perThread;
  std::string numbers;
};

bool IsPlain() { return std::strcmp(localeconv()->decimal_point, ".") == 0; }

}  // namespace

PlainNumbers::PlainNumbers() : before_(nullptr) {
  if (IsPlain()) return;
  const int perThread = _configthreadlocale(_ENABLE_PER_THREAD_LOCALE);
  before_ = new LocaleBefore{perThread, setlocale(LC_NUMERIC, nullptr)};
  setlocale(LC_NUMERIC, "C");
}

PlainNumbers::~PlainNumbers() {
  if (!before_) return;
  const auto* const before = static_cast<LocaleBefore*>(before_);
  setlocale(LC_NUMERIC, before->numbers.c_str());
  _configthreadlocale(before->perThread);
  delete before;
}

}  // namespace mw
