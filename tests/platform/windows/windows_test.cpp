// What is Windows' own: names in UTF-16, files that are open while they are replaced, the registry.
#include <filesystem>
#include <gtest/gtest.h>
#include <windows.h>

#include "platform/disk.h"
#include "platform/file.h"
#include "platform/windows/registry.h"
#include "support/archive_bytes.h"
#include "support/sandbox.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

class WindowsFiles : public SandboxTest {
 protected:
  static bool Write(const fs::path& path, const std::string& text) {
    File file;
    return file.Open(path, FileAccess::CreateNew) && file.WriteAt(0, TextBytes(text));
  }
};

TEST_F(WindowsFiles, TheBytesOfAPathAreUtf8) {
  EXPECT_EQ(fs::path("m\xC3\xA4p").native(), L"m\u00E4p");
  EXPECT_EQ(fs::path(L"m\u00E4p \U0001F5FA").string(), "m\xC3\xA4p \xF0\x9F\x97\xBA");
  EXPECT_EQ(fs::path("no \xE4 text").native(), L"no \uFFFD text");
  ASSERT_TRUE(WriteWholeFile("\xF0\x9F\x97\xBA.txt", "map"));
  EXPECT_TRUE(fs::exists(L"\U0001F5FA.txt"));
  EXPECT_EQ(ListFiles(".", ".txt"), std::vector<std::string>{"\xF0\x9F\x97\xBA.txt"});
}

TEST_F(WindowsFiles, ANameThatIsHalfACharacterEndsNothing) {
  const wchar_t name[] = L"half \xD83D.txt";
  const HANDLE made = CreateFileW(name, GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
  if (made == INVALID_HANDLE_VALUE) GTEST_SKIP() << "this file system has no such names";
  CloseHandle(made);
  EXPECT_EQ(ListFiles(".", ".txt").size(), 1u);
  DeleteFileW(name);
}

TEST_F(WindowsFiles, NamesAreFoundAsTheyAreSpelledOnDisk) {
  fs::create_directories("Mods/Desert");
  EXPECT_EQ(NativePath("MODS\\desert\\new.cfg").string(), "Mods\\Desert\\new.cfg");
  EXPECT_EQ(NativePath("mods/*").string(), "Mods\\*");
}

TEST_F(WindowsFiles, PathsMayBeLongerThan260Characters) {
  fs::path deep = folder;
  for (int i = 0; i < 6; ++i) {
    deep /= std::string(60, static_cast<char>('a' + i));
    ASSERT_NE(CreateDirectoryW((L"\\\\?\\" + deep.native()).c_str(), nullptr), 0) << i;
  }
  ASSERT_TRUE(Write(deep / "level.vra", "bytes"));
  EXPECT_TRUE(RenameFile(deep / "level.vra", deep / "moved.vra"));
  EXPECT_TRUE(IdentityOf(deep / "moved.vra"));
  EXPECT_TRUE(RemoveFile(deep / "moved.vra"));
  for (; deep != folder; deep = deep.parent_path()) {
    EXPECT_NE(RemoveDirectoryW((L"\\\\?\\" + deep.native()).c_str()), 0);
  }
}

TEST_F(WindowsFiles, OneThatIsOpenIsReplacedAndTheOldOneStaysReadable) {
  ASSERT_TRUE(Write("level", "old") && Write("aside", "new!"));
  File old, aside;
  ASSERT_TRUE(old.Open("level", FileAccess::ReadWrite) && old.Claim());
  ASSERT_TRUE(aside.Open("aside", FileAccess::ReadWrite));
  std::string error;
  ASSERT_TRUE(RenameFile("aside", "level", &error)) << error;
  EXPECT_EQ(ReadBytes("level"), TextBytes("new!"));
  EXPECT_TRUE(aside.IsAt("level"));
  EXPECT_FALSE(old.IsAt("level"));
  EXPECT_FALSE(IsClaimed("level")) << "the new file has no claim";
  EXPECT_TRUE(old.Holds(0, TextBytes("old")));
  old.Close();
  aside.Close();
  EXPECT_EQ(std::distance(fs::directory_iterator("."), fs::directory_iterator()), 1);
}

TEST_F(WindowsFiles, OneThatIsOpenCanBeRemovedAndItsNameIsFree) {
  ASSERT_TRUE(Write("level", "old"));
  File open;
  ASSERT_TRUE(open.Open("level", FileAccess::ReadWrite));
  EXPECT_TRUE(RemoveFile("level"));
  EXPECT_FALSE(fs::exists("level"));
  EXPECT_TRUE(Write("level", "new"));
}

TEST_F(WindowsFiles, AClaimIsKeptFromOthersAndKeepsNobodyFromReading) {
  ASSERT_TRUE(Write("level", "bytes"));
  File first, second;
  ASSERT_TRUE(first.Open("level", FileAccess::ReadWrite) && first.Claim());
  ASSERT_TRUE(second.Open("level", FileAccess::ReadWrite));
  EXPECT_FALSE(second.Claim());
  EXPECT_TRUE(IsClaimed("level"));
  EXPECT_TRUE(second.WriteAt(0, TextBytes("BYTES")));
  EXPECT_EQ(ReadBytes("level"), TextBytes("BYTES"));
  first.GiveUpClaim();
  EXPECT_TRUE(second.Claim());
}

class Registry : public ::testing::Test {
 protected:
  ~Registry() override {
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Mapwright test");
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Mapwright test");
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\WOW6432Node\\Mapwright test");
  }
  static bool WriteForMachine(const wchar_t* text, REGSAM view) {
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Mapwright test", 0, nullptr, 0,
                        KEY_SET_VALUE | view, nullptr, &key, nullptr) != ERROR_SUCCESS) {
      return false;
    }
    const auto bytes = static_cast<DWORD>((std::wcslen(text) + 1) * sizeof(wchar_t));
    const LSTATUS written =
        RegSetValueExW(key, L"VERSION", 0, REG_SZ, reinterpret_cast<const BYTE*>(text), bytes);
    RegCloseKey(key);
    return written == ERROR_SUCCESS;
  }
  static std::string Version() {
    return ReadRegistryText("Software\\Mapwright test", "version").value_or("none");
  }
};

TEST_F(Registry, IsReadFromTheUserAndFromBothViewsOfTheMachine) {
  EXPECT_EQ(Version(), "none");
  ASSERT_TRUE(WriteForMachine(L"1.3", KEY_WOW64_32KEY)) << "not an administrator";
  EXPECT_EQ(Version(), "1.3");
  ASSERT_TRUE(WriteForMachine(L"1.4 \u00E4", KEY_WOW64_64KEY));
  EXPECT_EQ(Version(), "1.4 \xC3\xA4");
  ASSERT_TRUE(WriteRegistryText("Software\\Mapwright test", "VERSION", "1.5"));
  EXPECT_EQ(Version(), "1.5");
}

}  // namespace
}  // namespace mw
