#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <gtest/gtest.h>
#include <vector>

#include "platform/modules.h"
#include "platform/processes.h"
#include "platform/qt/process_wait.h"
#include "platform/qt/process_window.h"
#include "platform/settings_store.h"

namespace mw {
namespace {

class ProcessTest : public ::testing::Test {
 protected:
  ProcessTest() {
    ObserveProcessWaits([this](bool waiting) { waits.push_back(waiting); });
  }
  ~ProcessTest() override {
    ObserveProcessWaits([](bool) {});
  }
  std::string Folder() const { return folder.path().toStdString(); }

  std::vector<bool> waits;
  QTemporaryDir folder;
};

TEST_F(ProcessTest, RunsQuotedCommandInTheFolderAndWaits) {
  const std::string path = folder.path().replace('/', '\\').toStdString();
  EXPECT_TRUE(RunProcessAndWait("\"\\bin\\sh\" -c \"sleep 0.1; echo done > result.txt\"", path));
  EXPECT_TRUE(QFile::exists(folder.filePath("result.txt")));
  EXPECT_EQ(waits, (std::vector<bool>{true, false}));
}

// A window that notes what the user does to it.
class InputDuringWaitTest : public ProcessTest {
 protected:
  InputDuringWaitTest() : button("Open", &window), field(&window) {
    window.resize(300, 100);
    field.move(0, 50);
    field.setFocus();
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    QObject::connect(&button, &QPushButton::clicked, [this] { ++clicks; });
  }

  void UseWindow() {
    ignored = IsInputIgnored();
    QWindow* const native = window.windowHandle();
    QTest::keyClick(native, Qt::Key_O);
    QTest::mouseClick(native, Qt::LeftButton, {}, button.geometry().center());
    native->close();
  }
  void UseWindowSoon() {
    QTimer::singleShot(0, &window, [this] { UseWindow(); });
  }

  QWidget window;
  QPushButton button;
  QLineEdit field;
  int clicks = 0;
  bool ignored = false;
};

TEST_F(InputDuringWaitTest, IsHandledOrDropped) {
  UseWindowSoon();
  EXPECT_EQ(RunCancellableProcess("/bin/sleep 0.5", Folder(), "Tracing", "The game traces."),
            ProcessEnd::Ended);
  EXPECT_TRUE(ignored);
  QCoreApplication::processEvents();
  EXPECT_EQ(clicks, 0);
  EXPECT_EQ(field.text(), "");
  EXPECT_TRUE(window.isVisible());
  UseWindowSoon();
  EXPECT_TRUE(RunProcessAndWait("/bin/sleep 0.5", Folder()));
  EXPECT_FALSE(ignored);
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(field.text(), "o");
  EXPECT_FALSE(window.isVisible());
}

TEST_F(ProcessTest, SaysWhenTheProgramCannotBeStarted) {
  EXPECT_FALSE(RunProcessAndWait("\"\\no\\such\\varnhold.exe\" +game x", Folder()));
  EXPECT_FALSE(RunProcessAndWait("", Folder()));
  EXPECT_EQ(RunCancellableProcess("/no/such/game", Folder(), "", ""), ProcessEnd::NotStarted);
}

// Programs as they lie in a game folder, and a Wine that writes down what it is to run.
class GameProgramTest : public ProcessTest {
 protected:
  GameProgramTest() : pathBefore(qgetenv("PATH")) { qputenv("PATH", folder.path().toUtf8()); }
  ~GameProgramTest() override { qputenv("PATH", pathBefore); }

  void WriteProgram(const char* name, const QByteArray& content) {
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }
  bool RunGame(const char* arguments) {
    const std::string game = folder.path().replace('/', '\\').toStdString();
    return RunProcessAndWait("\"" + game + "\\Varnhold.exe\" " + arguments, game);
  }
  // What a program of these tests was started with, one argument a line.
  QByteArray Arguments() {
    QFile file(folder.filePath("arguments.txt"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  static constexpr const char* kRecorder = "#!/bin/sh\nprintf '%s\\n' \"$@\" > arguments.txt\n";
  QByteArray pathBefore;
};

TEST_F(GameProgramTest, ArgumentsArriveAsTheyAre) {
  WriteProgram("varnhold.exe", kRecorder);
  EXPECT_TRUE(RunGame("+game mod +workingFolder \"C:\\Varn hold\\ShadowWork\\\" +hostServer 1"));
  EXPECT_EQ(Arguments(),
            "+game\nmod\n+workingFolder\nC:\\Varn hold\\ShadowWork\\\n+hostServer\n1\n");
}

TEST_F(GameProgramTest, AProgramForWindowsIsRunByWine) {
  WriteProgram("varnhold.exe", QByteArray("MZ\x90\0", 4));
  EXPECT_FALSE(RunGame("+game mod")) << "no Wine here";
  WriteProgram("wine", kRecorder);
  EXPECT_TRUE(RunGame("+game mod"));
  EXPECT_EQ(Arguments(), folder.filePath("varnhold.exe").toUtf8() + "\n+game\nmod\n");
}

TEST_F(GameProgramTest, WhatIsNoProgramIsNotStarted) {
  WriteProgram("varnhold.exe", "echo this has no first line that names a shell\n");
  EXPECT_FALSE(RunGame(""));
  WriteProgram("varnhold.exe", "");
  EXPECT_FALSE(RunGame(""));
  WriteProgram("varnhold.exe", kRecorder);
  QFile::setPermissions(folder.filePath("varnhold.exe"), QFile::ReadOwner);
  EXPECT_FALSE(RunGame(""));
  EXPECT_TRUE(waits.empty() || waits == (std::vector<bool>{true, false}));
}

TEST_F(ProcessTest, ProgramThatCrashesHasEnded) {
  EXPECT_TRUE(RunProcessAndWait("/bin/sh -c \"kill -9 $$\"", Folder()));
}

// What the program has started in turn, as Wine does, must not go on either, nor what does not want
// to end.
TEST_F(ProcessTest, CancelEndsTheProgramWithAllThatItHasStarted) {
  for (const char* const attitude : {"", "trap '' TERM; "}) {
    QTimer cancel;
    QObject::connect(&cancel, &QTimer::timeout, [&] {
      auto* const window = QApplication::activeModalWidget();
      if (!window || !QFile::exists(folder.filePath("started"))) return;
      cancel.stop();
      EXPECT_EQ(window->windowTitle(), "Tracing");
      EXPECT_EQ(window->findChild<QLabel*>("activityText")->text(), "The game traces.");
      EXPECT_EQ(window->findChild<QLabel*>("elapsedText")->text(), "Elapsed time: 0:00");
      QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {},
                        window->findChild<QPushButton*>()->geometry().center());
    });
    cancel.start(20);
    const std::string script = std::string("/bin/sh -c \"") + attitude +
                               "sleep 60 & echo $! > child; mv child started; wait; sleep 60\"";
    EXPECT_EQ(RunCancellableProcess(script, Folder(), "Tracing", "The game traces."),
              ProcessEnd::Cancelled);
    QFile started(folder.filePath("started"));
    ASSERT_TRUE(started.open(QIODevice::ReadOnly));
    QFile child("/proc/" + started.readAll().trimmed() + "/cmdline");  // empty once it has ended
    EXPECT_TRUE(QTest::qWaitFor(
        [&child] {
          const bool there = child.open(QIODevice::ReadOnly) && !child.readAll().isEmpty();
          child.close();
          return !there;
        },
        500))
        << attitude;
    started.remove();
  }
}

TEST(ElapsedTimeTest, IsShownAsMinutesOrHours) {
  const std::pair<int, const char*> cases[] = {
      {7, "0:07"}, {3599, "59:59"}, {3600, "1:00:00"}, {36061, "10:01:01"}};
  for (const auto& [seconds, text] : cases) EXPECT_EQ(ElapsedTimeText(seconds), text);
}

class SettingsTest : public ::testing::Test {
 protected:
  SettingsTest() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.filePath("user"));
    QSettings::setPath(QSettings::NativeFormat, QSettings::SystemScope, folder.filePath("system"));
  }
  void Write(const char* scope, const QByteArray& value) {
    const QString path = folder.filePath(QString(scope) + "/Quorrin");
    QDir().mkpath(path);
    QFile file(path + "/Varnhold.conf");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[General]\nINSTALLEDVERSION=" + value + "\n");
  }
  QTemporaryDir folder;
};

TEST_F(SettingsTest, MissingValueIsNothing) {
  EXPECT_EQ(ReadGameSetting("INSTALLEDVERSION"), std::nullopt);
}

TEST_F(SettingsTest, UsersValueComesBeforeTheMachines) {
  Write("system", "1.01.100");
  EXPECT_EQ(ReadGameSetting("INSTALLEDVERSION"), "1.01.100");
  Write("user", "1.04.000");
  EXPECT_EQ(ReadGameSetting("INSTALLEDVERSION"), "1.04.000");
}

TEST_F(SettingsTest, TheEditorsOwnValuesAreKeptWhereTheyCanBe) {
  EXPECT_EQ(ReadEditorSetting("Camera/mod/level"), std::nullopt);
  EXPECT_TRUE(WriteEditorSetting("Camera/mod/level", "1024 80.125 -3"));
  EXPECT_EQ(ReadEditorSetting("Camera/mod/level"), "1024 80.125 -3");
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null");
  EXPECT_FALSE(WriteEditorSetting("Camera/mod/level", "0 0 0"));
}

TEST_F(SettingsTest, ValueOfMoreThan31BytesIsUnreadable) {
  Write("system", QByteArray(31, '1'));
  EXPECT_EQ(ReadGameSetting("INSTALLEDVERSION"), std::string(31, '1'));
  Write("user", QByteArray(32, '1'));
  EXPECT_EQ(ReadGameSetting("INSTALLEDVERSION"), std::nullopt);
}

TEST(ModuleTest, FindsFunctionsOfAModuleBesideTheProgram) {
  Module module;
  ASSERT_TRUE(module.Load("mw_amm.mwp"));
  EXPECT_TRUE(module.Function("initMatMap"));
  EXPECT_FALSE(module.Function("noSuchFunction"));
  module.Unload();
  EXPECT_FALSE(module.IsLoaded());
  EXPECT_FALSE(module.Load("missing.mwp"));
}

}  // namespace
}  // namespace mw
