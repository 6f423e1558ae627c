#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
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
  EXPECT_TRUE(RunProcessAndWait("\"\\bin\\sh\" -c \"sleep 0.1; echo done > result.txt\"", path));
  EXPECT_TRUE(QFile::exists(folder.filePath("result.txt")));
  EXPECT_EQ(waits, (std::vector<bool>{true, false}));
}

TEST_F(ProcessTest, SaysWhenTheProgramCannotBeStarted) {
  EXPECT_FALSE(
      RunProcessAndWait("\"\\no\\such\\varnhold.exe\" +game x", folder.path().toStdString()));
  EXPECT_FALSE(RunProcessAndWait("", folder.path().toStdString()));
}

TEST_F(ProcessTest, ProgramThatCrashesHasEnded) {
  EXPECT_TRUE(RunProcessAndWait("/bin/sh -c \"kill -9 $$\"", folder.path().toStdString()));
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
