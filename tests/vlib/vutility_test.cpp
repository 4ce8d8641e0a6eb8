#include "vutility.h"

#include <gtest/gtest.h>
#include <utf8.h>

#include <clocale>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>

#include "failing_allocation.h"
#include "system_calls.h"
#include "temporary_folder.h"

namespace {

TEST(VUtility, TakesPathsApart) {
  const struct {
    const char* path;
    const char* folder;
    const char* file;
    const char* extension;
    const char* withDelimiter;
  } cases[] = {
      {"a/b/c.txt", "a/b", "c.txt", "txt", "a/b/c.txt/"},
      {"/c.x", "", "c.x", "x", "/c.x/"},
      {"plain", "", "plain", "plain", "plain/"},
      {"a.b/c/", "a.b/c", "", "b/c/", "a.b/c/"},
      {"", "", "", "", ""},
      {nullptr, "", "", "", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.path);
    EXPECT_EQ(VUtility::ExtractFilePath(c.path), c.folder);
    EXPECT_EQ(VUtility::ExtractFileName(c.path), c.file);
    EXPECT_EQ(VUtility::ExtractFileExt(c.path), c.extension);
    EXPECT_EQ(VUtility::IncludePathDelimiter(c.path), c.withDelimiter);
  }
  const std::string path = "a::b::c", delimiter = "::";
  EXPECT_EQ(VUtility::ExtractFilePath(path, delimiter), "a::b");
  EXPECT_EQ(VUtility::ExtractFileName(path, delimiter), ":c") << "one character is skipped, on purpose";
  EXPECT_EQ(VUtility::ExtractFilePath("a/b", ""), "");
  EXPECT_EQ(VUtility::ExtractFileName("a/b", ""), "");
}

TEST(VUtility, TrimsSpacesOnly) {
  EXPECT_EQ(VUtility::TrimString("  \ta b "), "\ta b");
  EXPECT_EQ(VUtility::TrimString(" a\n "), "a\n");
  EXPECT_EQ(VUtility::TrimString("  "), "");
  EXPECT_EQ(VUtility::TrimString(nullptr), "");
}

TEST(VUtility, ConvertsTextAsTheLocaleSays) {
  ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
  EXPECT_EQ(VUtility::StringToWideString("\xE2\x82\xAC z"), L"\u20AC z");
  EXPECT_EQ(VUtility::StringToWideString("a\xFF"), L"") << "which it does not know";
  EXPECT_EQ(VUtility::ToUpperCase(std::wstring(L"h\u00E9[")), L"H\u00C9[");
  EXPECT_EQ(VUtility::ToLowerCase(std::wstring(L"H\u00C9[")), L"h\u00E9[");
  EXPECT_EQ(VUtility::ToUpperCase(std::string("h[z")), "H[Z");
  EXPECT_EQ(VUtility::ToLowerCase(std::string("H[Z")), "h[z");
  std::setlocale(LC_CTYPE, "C");
  EXPECT_EQ(VUtility::WideCharToString(L"a\u20AC"), "");
}

// Gives back what VUtility allocates.
template <class Character>
using Buffer = std::unique_ptr<Character[]>;

TEST(VUtility, ConvertsUtf8InEveryLocale) {
  const char* const narrow = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
  const wchar_t* const wide = L"a\u00E9\u20AC\U0001F600";
  for (const char* locale : {"C", "C.UTF-8"}) {
    SCOPED_TRACE(locale);
    ASSERT_NE(std::setlocale(LC_ALL, locale), nullptr);
    EXPECT_STREQ(Buffer<wchar_t>(VUtility::UTF8ToWideChar(narrow)).get(), wide);
    EXPECT_STREQ(Buffer<char>(VUtility::WideCharToUTF8(wide)).get(), narrow);
  }
  std::setlocale(LC_ALL, "C");
  EXPECT_EQ(VUtility::UTF8ToWideChar(nullptr), nullptr);
  EXPECT_EQ(VUtility::WideCharToUTF8(nullptr), nullptr);
  EXPECT_THROW(VUtility::UTF8ToWideChar("a\xC3"), utf8::invalid_utf8);
  EXPECT_THROW(VUtility::WideCharToUTF8(L"\xD800"), utf8::invalid_code_point);
}

TEST(VUtility, AllocatesRoomForTheLongestCharacters) {
  std::size_t bytes = 0;
  const auto watch = system_calls::new_array.ReplaceBy([&](std::size_t wanted) {
    bytes = wanted;
    return system_calls::new_array.Real(wanted);
  });
  const Buffer<char> narrow(VUtility::WideCharToUTF8(std::wstring(50, L'\U0001F600')));
  EXPECT_GE(bytes, 4 * 50 + 1U);
  const Buffer<wchar_t> wide(VUtility::UTF8ToWideChar(std::string(50, 'a')));
  EXPECT_GE(bytes, (50 + 1) * sizeof(wchar_t));
}

struct VUtilityFiles : testing::Test {
  const TemporaryFolder folder;
  const std::string source = folder.Path("source"), target = folder.Path("target");
};

TEST_F(VUtilityFiles, CopyHasTheSameContents) {
  for (const std::size_t size :
       {0U, 1U, 98303U, 98304U, 98305U, 200001U}) {  // around the blocks of 98304 bytes
    std::string contents;
    while (contents.size() < size) contents += static_cast<char>(contents.size() % 251);
    WriteFile(source, contents);
    EXPECT_TRUE(VUtility::CpFile(source, target, true)) << size;
    EXPECT_TRUE(ReadFile(target) == contents) << size;
  }
}

TEST_F(VUtilityFiles, CopyFailsWithoutSourcePermissionOrRoom) {
  WriteFile(source, "new");
  EXPECT_TRUE(VUtility::CpFile(source, target, false)) << "there is no target yet";
  WriteFile(target, "old");
  EXPECT_FALSE(VUtility::CpFile(source, target, false)) << "it must not be overwritten";
  EXPECT_FALSE(VUtility::CpFile(nullptr, target.c_str(), true));
  EXPECT_FALSE(VUtility::CpFile(folder.Path("none"), target, true));
  EXPECT_EQ(ReadFile(target), "old");
  EXPECT_FALSE(VUtility::CpFile(source, folder.Path("none/target"), true));
  EXPECT_FALSE(VUtility::CpFile(source, "/dev/full", true));
}

TEST_F(VUtilityFiles, CopyThatFailsForWantOfMemoryLeavesTheTargetAsItWas) {
  WriteFile(source, "new");
  WriteFile(target, "old");
  {
    const auto shortage = FailingAllocation::OfAtLeast(1);
    EXPECT_FALSE(VUtility::CpFile(source, target, true));
  }
  EXPECT_EQ(ReadFile(target), "old");
}

TEST_F(VUtilityFiles, LogsToTheEndOfAFileUntilItIsDeleted) {
  EXPECT_FALSE(VUtility::FileExists(target));
  EXPECT_TRUE(VUtility::LogFile(target, "a"));
  EXPECT_TRUE(VUtility::LogFile(target, "b"));
  EXPECT_TRUE(VUtility::FileExists(target));
  EXPECT_EQ(ReadFile(target), "ab");
  EXPECT_TRUE(VUtility::DelFile(target));
  EXPECT_FALSE(VUtility::DelFile(target)) << "it is gone";
  EXPECT_FALSE(VUtility::LogFile(folder.Path("none/log"), "a"));
  EXPECT_FALSE(VUtility::LogFile(nullptr, "a"));
}

TEST_F(VUtilityFiles, ListsAFolderByName) {
  WriteFile(folder.Path("b"), "");
  VUtility::CreateDir(folder.Path("c"), false);
  std::filesystem::create_directory_symlink("c", folder.Path("a"));
  EXPECT_EQ(VUtility::DirList(folder.Path()), ".\n..\na\nb\nc\n");
  EXPECT_EQ(VUtility::DirListType(folder.Path()), "<DIR>  .\n<DIR>  ..\n<FILE> a\n<FILE> b\n<DIR>  c\n");
  EXPECT_EQ(VUtility::DirList(folder.Path("b")), "") << "which is no folder";
}

TEST_F(VUtilityFiles, RemovesAFolderWithAllThatIsInItButNotWhereLinksLead) {
  std::filesystem::create_directories(target + "/a/b");
  WriteFile(target + "/a/b/file", "");
  EXPECT_TRUE(VUtility::CreateDir(source, false));
  EXPECT_FALSE(VUtility::CreateDir(source, false)) << "it is there";
  WriteFile(source + "/file", "kept");
  std::filesystem::create_directory_symlink(source, target + "/link");
  EXPECT_TRUE(VUtility::RemoveDir(target, false));
  EXPECT_TRUE(std::filesystem::is_empty(target));
  EXPECT_TRUE(VUtility::RemoveDir(target, true));
  EXPECT_FALSE(VUtility::DirectoryExists(target));
  EXPECT_EQ(ReadFile(source + "/file"), "kept");
  EXPECT_FALSE(VUtility::RemoveDir(target, true)) << "it is gone";
}

}  // namespace
