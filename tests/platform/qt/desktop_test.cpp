#include <QCoreApplication>
#include <QDir>
#include <QFile>
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
  std::vector<bool> waits;
  QTemporaryDir folder;
};

TEST_F(ProcessTest, RunsQuotedCommandInTheFolderAndWaits) {
  const std::string path = folder.path().replace('/', '\\').toStdString();
  EXPECT_TRUE(RunProcessAndWait("\"\\bin\\sh\" -c \"sleep 0.1; echo done > result.txt\"", path,
                                InputDuringWait::Handled));
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
  void WaitAndUseWindow(InputDuringWait input) {
    QTimer::singleShot(0, &window, [this] { UseWindow(); });
    EXPECT_TRUE(RunProcessAndWait("/bin/sleep 0.5", folder.path().toStdString(), input));
  }

  QWidget window;
  QPushButton button;
  QLineEdit field;
  int clicks = 0;
  bool ignored = false;
};

TEST_F(InputDuringWaitTest, IsHandledOrDropped) {
  WaitAndUseWindow(InputDuringWait::Ignored);
  EXPECT_TRUE(ignored);
  QCoreApplication::processEvents();
  EXPECT_EQ(clicks, 0);
  EXPECT_EQ(field.text(), "");
  EXPECT_TRUE(window.isVisible());
  WaitAndUseWindow(InputDuringWait::Handled);
  EXPECT_FALSE(ignored);
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(field.text(), "o");
  EXPECT_FALSE(window.isVisible());
}

TEST_F(ProcessTest, SaysWhenTheProgramCannotBeStarted) {
  EXPECT_FALSE(RunProcessAndWait("\"\\no\\such\\varnhold.exe\" +game x",
                                 folder.path().toStdString(), InputDuringWait::Handled));
  EXPECT_FALSE(RunProcessAndWait("", folder.path().toStdString(), InputDuringWait::Handled));
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
    return RunProcessAndWait("\"" + game + "\\Varnhold.exe\" " + arguments, game,
                             InputDuringWait::Handled);
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
  EXPECT_TRUE(RunProcessAndWait("/bin/sh -c \"kill -9 $$\"", folder.path().toStdString(),
                                InputDuringWait::Handled));
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
