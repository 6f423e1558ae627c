// The story of a test: what was done, what the user was told, and what then was. It is compared as
// one text, so that a word or a file that nobody thought of is seen too.
#pragma once

#include <regex>
#include <string>
#include <type_traits>
#include <utility>

#include "support/golden.h"
#include "support/prompts.h"
#include "support/sandbox.h"

namespace mw {

class StoryTest : public SandboxTest {
 protected:
  // Does something with these answers of the user. The story goes on with what it answered, message
  // boxes, status texts and started programs.
  template <typename Act>
  void Do(const std::string& what, Act act, std::initializer_list<PromptAnswer> answers = {}) {
    Answer(answers);
    Forget();
    const std::size_t before = story_.size();
    Tell("---- " + what);
    if constexpr (std::is_void_v<std::invoke_result_t<Act>>) {
      act();
    } else {
      story_.insert(story_.find('\n', before), act() ? ": yes" : ": no");
    }
    EXPECT_TRUE(scripted::script.answers.empty()) << what << " asked for less";
    TellRest();
  }
  void Tell(const std::string& line) { story_ += line + '\n'; }
  // What else there is to see after a step, in lines.
  virtual std::string StateAfterStep() const { return {}; }

  // What was told is what tests/golden/app/stories/<suite>.<test>.txt holds.
  void TearDown() override {
    if (story_.empty()) return;
    for (const std::string& path : {folder.string(), GameFolder()}) {
      for (std::size_t at = 0; (at = story_.find(path)) != story_.npos;) {
        story_.replace(at, path.size(), path.back() == '\\' ? "GAME\\" : "GAME");
      }
    }
    story_ = std::regex_replace(story_, std::regex("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}"),
                                "TIME");
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    ExpectGolden(std::string("app/stories/") + test.test_suite_name() + "." + test.name() + ".txt",
                 story_);
  }

 private:
  static void Forget() {
    scripted::script.prompts.clear();
    for (auto& texts : scripted::script.status) texts.clear();
    scripted::script.startedProcesses.clear();
    scripted::script.openedDocuments.clear();
  }
  void TellRest() {
    for (const std::string& prompt : TakePrompts()) Tell("box    " + prompt);
    for (const std::string& text : scripted::script.status[1]) Tell("status " + text);
    for (const std::string& command : scripted::script.startedProcesses) Tell("start  " + command);
    for (const std::string& file : scripted::script.openedDocuments) Tell("show   " + file);
    story_ += StateAfterStep();
  }

  std::string story_;
};

}  // namespace mw
