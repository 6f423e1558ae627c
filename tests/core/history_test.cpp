#include "core/history.h"

#include <gtest/gtest.h>

#include "core/editor_state.h"

namespace mw {
namespace {

float level = 0;
int exchanges = 0;

class HistoryTest : public ::testing::Test {
 protected:
  HistoryTest() {
    Reset();
    exchanges = 0;
  }
  ~HistoryTest() override { Reset(); }

  static void Reset() {
    ResetCoreState();
    level = 0;
  }

  static void Set(float value, const char* name = "Level",
                  HistoryStep::Kind kind = HistoryStep::Single) {
    const HistoryStep step(name, kind);
    KeepSetting(level, [] { ++exchanges; });
    level = value;
    editor.levelModified = true;
  }
};

TEST_F(HistoryTest, EachStepIsTakenBackAndDoneAgainByName) {
  Set(1, "One");
  Set(2, "Two");
  EXPECT_EQ(NextUndo(), "Two");
  EXPECT_EQ(Undo()->name, "Two");
  EXPECT_EQ(level, 1);
  EXPECT_EQ(NextUndo() + NextRedo(), "OneTwo");
  EXPECT_EQ(Undo()->name, "One");
  EXPECT_EQ(level, 0);
  EXPECT_FALSE(Undo());
  EXPECT_TRUE(Redo() && Redo());
  EXPECT_EQ(level, 2);
  EXPECT_FALSE(Redo());
  EXPECT_EQ(exchanges, 4);
}

TEST_F(HistoryTest, ANewStepEndsWhatCouldBeRedoneAndANullGestureDoesNot) {
  Set(1);
  Undo();
  Set(0);
  EXPECT_EQ(NextRedo(), "Level") << "nothing was changed";
  EXPECT_FALSE(editor.levelModified);
  Set(-0.0f);
  EXPECT_EQ(NextRedo(), "");
  EXPECT_EQ(NextUndo(), "Level") << "the sign of a zero is a change";
}

TEST_F(HistoryTest, GesturesWithinAGestureAreOneStep) {
  HeldStep stroke;
  stroke.Begin("Stroke");
  Set(1);
  EXPECT_FALSE(Undo()) << "the button is held";
  EXPECT_EQ(NextUndo(), "");
  Set(2);
  stroke.End();
  stroke.End();
  EXPECT_EQ(NextUndo(), "Stroke");
  Undo();
  EXPECT_EQ(level, 0);
  stroke.Begin("Stroke");
  ClearHistory();
  stroke.End();
  Set(3, "Later");
  EXPECT_EQ(NextUndo(), "Later");
}

TEST_F(HistoryTest, ARunIsOneStepUntilSomethingComesBetween) {
  const auto press = [] { Set(level + 1, "Run", HistoryStep::Run); };
  press(), press(), press();
  EXPECT_EQ(editor.history.past.size(), 1u);
  EndHistoryRun();
  press();
  MarkHistorySaved();
  press();
  Set(9, "Other");
  press();
  EXPECT_EQ(editor.history.past.size(), 5u);
  while (Undo()) continue;
  EXPECT_EQ(level, 0);
  press();
  Set(level - 1, "Run", HistoryStep::Run);
  EXPECT_EQ(NextUndo(), "") << "the run led back";
}

TEST_F(HistoryTest, TheModifiedMarkFollowsTheSavedState) {
  Set(1);
  Set(2);
  MarkHistorySaved(), editor.levelModified = false;
  Undo();
  EXPECT_TRUE(editor.levelModified);
  Redo();
  EXPECT_FALSE(editor.levelModified);
  Undo();
  Set(3);
  Undo();
  EXPECT_TRUE(editor.levelModified) << "the saved state was after a step that is gone";

  ClearHistory(false);
  Set(4);
  Undo();
  EXPECT_TRUE(editor.levelModified) << "recovered edits are saved nowhere";

  ClearHistory();
  editor.levelModified = true;  // by something that is no step
  Set(5);
  Undo();
  EXPECT_TRUE(editor.levelModified);

  ClearHistory();
  {
    const HistoryStep step("Stroke");
    KeepSetting(level);
    level = 6;
    MarkHistorySaved(), editor.levelModified = false;
    level = 7, editor.levelModified = true;
  }
  Undo();
  EXPECT_TRUE(editor.levelModified) << "half of the stroke was saved";
}

TEST_F(HistoryTest, TheOldestStepsGoFirst) {
  for (int k = 1; k <= 10; ++k) Set(static_cast<float>(k));
  editor.history.limit = 3 * editor.history.past.back().bytes;
  Set(11);
  EXPECT_EQ(editor.history.past.size(), 3u);
  while (Undo()) continue;
  EXPECT_EQ(level, 8);
  EXPECT_TRUE(editor.levelModified) << "the opened state is out of reach";
  editor.history.limit = 10;
  Set(12);
  EXPECT_EQ(NextUndo() + NextRedo(), "") << "none could be undone without the last";
}

}  // namespace
}  // namespace mw
