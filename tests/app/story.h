// The story of a test: what was done, what the user was told, and what then was. It is compared as
// one text, so that a word or a file that nobody thought of is seen too.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/golden.h"
#include "support/prompts.h"
#include "support/sandbox.h"

namespace mw {

// The name of the test that acts out a file.
inline std::string StoryName(const testing::TestParamInfo<std::string>& story) {
  return std::filesystem::path(story.param).stem().string();
}

class StoryTest : public SandboxTest {
 protected:
  // Does something with these answers of the user. The story goes on with what it answered, message
  // boxes, status texts and started programs, and with what else there is to see when it is new.
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
    TellRest();
  }

  // Acts out a story that stands in a file: a line "> verb word word | Yes No" is done by the verb
  // of that name, and what the user answers stands behind the stroke; a line that begins with # is
  // a remark; all others are what is compared.
  using Words = std::vector<std::string>;
  using Verb = std::function<void(const Words&)>;
  void ActOut(const std::string& file, const std::map<std::string, Verb>& verbs) {
    golden_ = file;
    verbs_ = &verbs;
    const std::string script = GoldenText(file);
    ASSERT_FALSE(script.empty()) << file << " tells nothing";
    script_.str(script);
    Forget();
    ActWhile([] { return true; });
  }
  // Goes on with the story within one of its verbs: while a dialog is open.
  void ActWhile(const std::function<bool()>& goesOn) {
    for (std::string line; goesOn() && std::getline(script_, line);) {
      const bool isStep = line.starts_with("> ");
      if (isStep || line.starts_with("#")) Tell(line);
      if (!isStep) continue;
      const std::size_t stroke = std::min(line.find(" | "), line.size());
      Words words = Split(line.substr(2, stroke - 2));
      scripted::script.answers.clear();
      for (const std::string& word : Split(line.substr(std::min(stroke + 2, line.size())))) {
        scripted::script.answers.push_back(kAnswers.at(word));
      }
      const auto verb = verbs_->find(words.at(0));
      ASSERT_TRUE(verb != verbs_->end()) << golden_ << " has no such verb: " << line;
      words.erase(words.begin());
      verb->second(words);
      TellRest();
    }
  }
  void Tell(const std::string& line) { story_ += line + '\n'; }
  // What the user was told and asked since the step before, and what else there is to see now.
  void TellRest() {
    EXPECT_TRUE(scripted::script.answers.empty()) << "less was asked than answered";
    for (const std::string& prompt : TakePrompts()) Tell("box    " + prompt);
    for (const std::string& text : scripted::script.status[1]) Tell("status " + text);
    for (const std::string& command : scripted::script.startedProcesses) Tell("start  " + command);
    for (const std::string& file : scripted::script.openedDocuments) Tell("show   " + file);
    if (scripted::script.waitCursorCount > 0) Tell("the wait cursor");
    if (std::string state = StateAfterStep(); state != state_) story_ += state_ = std::move(state);
    Forget();
  }
  void TellAnswer(bool answer) { Tell(answer ? "       yes" : "       no"); }
  // What else there is to see after a step, in lines.
  virtual std::string StateAfterStep() { return {}; }
  // Those that were not there when this was last asked.
  std::string News(const std::vector<std::string>& lines) {
    std::string news;
    for (const std::string& line : lines) {
      if (!before_.contains(line)) news += line + '\n';
    }
    before_ = {lines.begin(), lines.end()};
    return news;
  }

  // What was told is what that file holds, or tests/golden/app/stories/<suite>.<test>.txt.
  void TearDown() override {
    if (story_.empty()) return;
    for (const std::string& path : {folder.string(), GameFolder()}) {
      for (std::size_t at = 0; (at = story_.find(path)) != story_.npos;) {
        story_.replace(at, path.size(), path.back() == '\\' ? "GAME\\" : "GAME");
      }
    }
    const std::regex time("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}");
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    if (golden_.empty()) {
      golden_ = std::string("app/stories/") + test.test_suite_name() + "." + test.name() + ".txt";
    }
    ExpectGolden(golden_, std::regex_replace(story_, time, "TIME"));
  }

 private:
  static Words Split(const std::string& text) {
    std::istringstream stream(text);
    return Words(std::istream_iterator<std::string>(stream), {});
  }
  static void Forget() {
    scripted::script.prompts.clear();
    for (auto& texts : scripted::script.status) texts.clear();
    scripted::script.startedProcesses.clear();
    scripted::script.openedDocuments.clear();
    scripted::script.waitCursorCount = 0;
  }
  inline static const std::map<std::string, PromptAnswer> kAnswers = {
      {"Yes", PromptAnswer::Yes},
      {"No", PromptAnswer::No},
      {"Ok", PromptAnswer::Ok},
      {"Cancel", PromptAnswer::Cancel}};
  std::string story_, state_, golden_;
  std::set<std::string> before_;
  std::istringstream script_;
  const std::map<std::string, Verb>* verbs_ = nullptr;
};

}  // namespace mw
