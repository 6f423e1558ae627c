// Numbers with a decimal point in every country; posix/ and windows/ each have their own way.
#pragma once

namespace mw {

// The C locale's numbers for the calls of this thread while it lives.
class PlainNumbers {
 public:
  PlainNumbers();
  ~PlainNumbers();
  PlainNumbers(const PlainNumbers&) = delete;
  PlainNumbers& operator=(const PlainNumbers&) = delete;

 private:
  void* before_;  // the system's, to go back to
};

}  // namespace mw
