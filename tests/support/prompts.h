// The message boxes that the scripted platform showed, for tests that check them.
#pragma once

#include <gmock/gmock.h>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "platform/scripted/script.h"

namespace mw {

// The boxes since this was last asked, each as "Caption: text", then " [YesNo]" and the like where
// it asks something and " (Stop)" and the like where it has an icon.
inline std::vector<std::string> TakePrompts() {
  static constexpr const char* kButtons[] = {"", " [OkCancel]", " [YesNo]", " [YesNoCancel]"};
  static constexpr const char* kIcons[] = {"", " (Information)", " (Question)", " (Exclamation)",
                                           " (Stop)"};
  std::vector<std::string> shown;
  for (const scripted::Prompt& prompt : std::exchange(scripted::script.prompts, {})) {
    shown.push_back(prompt.caption + ": " + prompt.text +
                    kButtons[static_cast<int>(prompt.buttons)] +
                    kIcons[static_cast<int>(prompt.icon)]);
  }
  return shown;
}

// Exactly these boxes were shown since the last time; each expected text is a part of its box.
inline void ExpectPrompts(std::initializer_list<std::string> expected) {
  std::vector<::testing::Matcher<std::string>> matchers;
  for (const std::string& part : expected) matchers.push_back(::testing::HasSubstr(part));
  EXPECT_THAT(TakePrompts(), ::testing::ElementsAreArray(matchers));
}

// Exactly these boxes were shown since the last such call, in this order: text, caption, buttons
// and icon, of which what stands as its default counts, too.
inline void ExpectBoxes(std::initializer_list<scripted::Prompt> expected) {
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

// The user's next answers.
inline void Answer(std::initializer_list<PromptAnswer> answers) {
  scripted::script.answers = answers;
}

}  // namespace mw
