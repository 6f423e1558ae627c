#include "platform/qt/desktop.h"

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
#include <optional>
#include <string>
#include <vector>

#include "platform/modules.h"
#include "platform/processes.h"
#include "platform/qt/process_wait.h"
#include "platform/qt/process_window.h"
#include "platform/settings_store.h"
#include "platform/single_instance.h"

namespace mw {
namespace {

class ProcessTest : public ::testing::Test {
 protected:
  ProcessTest() {
    ObserveProcessWaits([this](bool waiting) { waits.push_back(waiting); });
  }
  ~ProcessTest() override {
    ObserveProcessWaits([](bool) {});
    qputenv("PATH", pathBefore);
  }
  std::string Folder() const { return folder.path().toStdString(); }

  // A program as it lies in a game folder.
  void WriteProgram(const char* name, const QByteArray& content) {
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }
  // No other program can be found meanwhile.
  bool RunGame(const char* arguments) {
    qputenv("PATH", folder.path().toUtf8());
    const std::string game = folder.path().replace('/', '\\').toStdString();
    return RunProcessAndWait("\"" + game + "\\Varnhold.exe\" " + arguments, game);
  }
  QByteArray Content(const char* name) const {
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
  }

  // Writes down what it is started with, one argument a line.
  static constexpr const char* kRecorder = "#!/bin/sh\nprintf '%s\\n' \"$@\" > arguments.txt\n";
  std::vector<bool> waits;
  QTemporaryDir folder;
  const QByteArray pathBefore = qgetenv("PATH");
};

TEST_F(ProcessTest, RunsQuotedCommandInTheFolderAndWaits) {
  const std::string path = folder.path().replace('/', '\\').toStdString();
  EXPECT_TRUE(RunProcessAndWait("\"\\bin\\sh\" -c \"sleep 0.1; echo done > result.txt\"", path));
  EXPECT_EQ(Content("result.txt"), "done\n");
  EXPECT_EQ(waits, (std::vector<bool>{true, false}));
  EXPECT_TRUE(RunProcessAndWait("/bin/sh -c \"kill -9 $$\"", path)) << "a crash is an end";
}

TEST_F(ProcessTest, ArgumentsArriveAsTheyAreAndAProgramForWindowsIsRunByWine) {
  WriteProgram("varnhold.exe", kRecorder);
  EXPECT_TRUE(RunGame("+game mod +workingFolder \"C:\\Varn hold\\ShadowWork\\\" +hostServer 1"));
  EXPECT_EQ(Content("arguments.txt"),
            "+game\nmod\n+workingFolder\nC:\\Varn hold\\ShadowWork\\\n+hostServer\n1\n");
  WriteProgram("varnhold.exe", QByteArray("MZ\x90\0", 4));
  EXPECT_FALSE(RunGame("+game mod")) << "no Wine here";
  WriteProgram("wine", kRecorder);
  EXPECT_TRUE(RunGame("+game mod"));
  EXPECT_EQ(Content("arguments.txt"), folder.filePath("varnhold.exe").toUtf8() + "\n+game\nmod\n");
}

TEST_F(ProcessTest, WhatIsNoProgramIsNotStarted) {
  for (const char* command : {"\"\\no\\such\\varnhold.exe\" +game x", ""}) {
    EXPECT_FALSE(RunProcessAndWait(command, Folder())) << command;
  }
  EXPECT_EQ(RunCancellableProcess("/no/such/game", Folder(), "", ""), ProcessEnd::NotStarted);
  for (const char* content : {"echo this has no first line that names a shell\n", "", "M", "#"}) {
    WriteProgram("varnhold.exe", content);
    EXPECT_FALSE(RunGame("")) << content;
  }
  EXPECT_TRUE(waits.empty());
  WriteProgram("varnhold.exe", kRecorder);
  QFile::setPermissions(folder.filePath("varnhold.exe"), QFile::ReadOwner);
  EXPECT_FALSE(RunGame(""));
}

// A window in which the user types "o", presses the button and closes it during the wait.
TEST_F(ProcessTest, InputDuringAWaitIsHandledOrDropped) {
  QWidget window;
  QPushButton button("Open", &window);
  QLineEdit field(&window);
  int clicks = 0;
  window.resize(300, 100);
  field.move(0, 50);
  field.setFocus();
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  QObject::connect(&button, &QPushButton::clicked, [&] { ++clicks; });
  for (const bool ignored : {true, false}) {
    QTimer::singleShot(0, &window, [&] {
      EXPECT_EQ(IsInputIgnored(), ignored);
      QWindow* const native = window.windowHandle();
      QTest::keyClick(native, Qt::Key_O);
      QTest::mouseClick(native, Qt::LeftButton, {}, button.geometry().center());
      native->close();
    });
    const char* const command = "/bin/sleep 0.5";
    EXPECT_TRUE(ignored ? RunCancellableProcess(command, Folder(), "", "") == ProcessEnd::Ended
                        : RunProcessAndWait(command, Folder()));
    QCoreApplication::processEvents();
    EXPECT_EQ(clicks, ignored ? 0 : 1);
    EXPECT_EQ(field.text(), ignored ? "" : "o");
    EXPECT_EQ(window.isVisible(), ignored);
  }
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
    QFile child("/proc/" + Content("started").trimmed() + "/cmdline");  // empty once it has ended
    const auto isGone = [&child] {
      const bool there = child.open(QIODevice::ReadOnly) && !child.readAll().isEmpty();
      child.close();
      return !there;
    };
    EXPECT_TRUE(QTest::qWaitFor(isGone, 500)) << attitude;
    QFile::remove(folder.filePath("started"));
  }
}

TEST(ElapsedTimeTest, IsShownAsMinutesOrHours) {
  const std::pair<int, const char*> kRows[] = {
      {7, "0:07"}, {3599, "59:59"}, {3600, "1:00:00"}, {36061, "10:01:01"}};
  for (const auto& [seconds, text] : kRows) EXPECT_EQ(ElapsedTimeText(seconds), text);
}

class SettingsTest : public ::testing::Test {
 protected:
  SettingsTest() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.filePath("user"));
    QSettings::setPath(QSettings::NativeFormat, QSettings::SystemScope, folder.filePath("system"));
  }
  void Write(const char* scope, const std::string& value) {
    const QString path = folder.filePath(QString(scope) + "/Quorrin");
    QDir().mkpath(path);
    QFile file(path + "/Varnhold.conf");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(("[General]\nINSTALLEDVERSION=" + value + "\n").c_str());
  }
  QTemporaryDir folder;
};

TEST_F(SettingsTest, UsersValueComesBeforeTheMachinesAndHasAtMost31Bytes) {
  using Value = std::optional<std::string>;
  const std::string longest(31, '1');
  const struct {
    const char* scope;
    std::string written;
    Value read;
  } kRows[] = {{"system", longest, longest},
               {"user", "1.04.000", "1.04.000"},
               {"user", longest + "1", std::nullopt}};
  EXPECT_EQ(ReadGameSetting("INSTALLEDVERSION"), std::nullopt);
  for (const auto& row : kRows) {
    Write(row.scope, row.written);
    EXPECT_EQ(ReadGameSetting("INSTALLEDVERSION"), row.read) << row.written;
  }
}

TEST_F(SettingsTest, TheEditorsOwnValuesAreKeptWhereTheyCanBe) {
  EXPECT_EQ(ReadEditorSetting("Camera/mod/level"), std::nullopt);
  EXPECT_TRUE(WriteEditorSetting("Camera/mod/level", "1024 80.125 -3"));
  EXPECT_EQ(ReadEditorSetting("Camera/mod/level"), "1024 80.125 -3");
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null");
  EXPECT_FALSE(WriteEditorSetting("Camera/mod/level", "0 0 0"));
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

TEST(SingleInstance, IsClaimedForAsLongAsItIsHeld) {
  EXPECT_TRUE(ClaimSingleInstance("mapwright-test"));
  std::unique_ptr<QLockFile> first = std::move(desktop.instanceLock);
  QTest::qSleep(20);  // milliseconds; it does not get old
  EXPECT_FALSE(ClaimSingleInstance("mapwright-test"));
  EXPECT_TRUE(ClaimSingleInstance("mapwright-other"));
  first.reset();
  EXPECT_TRUE(ClaimSingleInstance("mapwright-test"));
  QFile lock(desktop.instanceLock->fileName());
  ASSERT_TRUE(lock.open(QIODevice::ReadOnly));
  const QByteArray left = lock.readAll();
  lock.close();
  desktop.instanceLock.reset();
  ASSERT_TRUE(lock.open(QIODevice::WriteOnly) && lock.write(left) == left.size());
  lock.close();
  EXPECT_TRUE(ClaimSingleInstance("mapwright-test")) << "a killed program had this one's number";
  desktop.instanceLock.reset();
}

}  // namespace
}  // namespace mw
