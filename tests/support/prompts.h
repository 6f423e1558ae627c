// What the user was told and asked: the message boxes that the scripted platform recorded.
#pragma once

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>

#include "platform/scripted/script.h"

namespace mw {

// Exactly these boxes were shown since the last such call, in this order: text, caption, buttons
// and icon, of which what stands as its default counts, too.
inline void ExpectPrompts(std::initializer_list<scripted::Prompt> expected) {
  const auto shown = std::exchange(scripted::script.prompts, {});
  EXPECT_EQ(shown.size(), expected.size());
  std::size_t at = 0;
  for (const scripted::Prompt& prompt : expected) {
    if (at == shown.size()) break;
    SCOPED_TRACE("message box " + std::to_string(at + 1));
    EXPECT_EQ(shown[at].text, prompt.text);
    EXPECT_EQ(shown[at].caption, prompt.caption);
    EXPECT_EQ(shown[at].buttons, prompt.buttons);
    EXPECT_EQ(shown[at].icon, prompt.icon);
    ++at;
  }
}

}  // namespace mw
