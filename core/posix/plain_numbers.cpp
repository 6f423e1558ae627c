#include "core/plain_numbers.h"

#include <locale.h>

namespace mw {
namespace {

locale_t CLocale() {
  static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
  return plain;
}

}  // namespace

PlainNumbers::PlainNumbers() : before_(uselocale(CLocale())) {}

PlainNumbers::~PlainNumbers() { uselocale(static_cast<locale_t>(before_)); }

}  // namespace mw
