#include "vutility.h"

#include <gtest/gtest.h>
#include <utf8.h>

#include <array>
#include <clocale>
#include <filesystem>
#include <memory>
#include <stdexcept>

#include "temporary_folder.h"

using std::string_literals::operator""s;

TEST(VUtility, TakesPathsApart) {
  const std::array<const char*, 4> cases[] = {
      {"a/b/c.txt", "a/b", "c.txt", "txt"}, {"/c", "", "c", "/c"}, {"plain", "", "plain", "plain"},
      {"a.b/c/", "a.b/c", "", "b/c/"},      {"", "", "", ""},      {nullptr, "", "", ""}};
  for (const auto& [path, folder, name, extension] : cases) {
    EXPECT_EQ(VUtility::ExtractFilePath(path), folder);
    EXPECT_EQ(VUtility::ExtractFileName(path), name);
    EXPECT_EQ(VUtility::ExtractFileExt(path), extension);
  }
  EXPECT_EQ(VUtility::ExtractFilePath("a::b::c"s, "::"), "a::b");
  EXPECT_EQ(VUtility::ExtractFilePath("a/b", "") + VUtility::ExtractFileName("a/b", nullptr), "");
  EXPECT_EQ(VUtility::IncludePathDelimiter("dir"s) + VUtility::IncludePathDelimiter("dir/"), "dir/dir/");
  EXPECT_EQ(VUtility::IncludePathDelimiter(nullptr), "");
  EXPECT_EQ(VUtility::TrimString("  \t a b\n  "s), "\t a b\n");
  EXPECT_EQ(VUtility::TrimString("   ") + VUtility::TrimString(nullptr), "");
  EXPECT_EQ(VUtility::ExtractFileName("a::b::c"s, "::"), ":c") << "the rest of a long delimiter stays";
}

TEST(VUtility, ConvertsUtf8BothWaysAndRefusesWhatIsNone) {
  const std::wstring wide = L"a\u007F\u0080\u07FF\u0800\uFFFD\U00010000\U0010FFFF";
  const std::string narrow = "a\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBD\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
  EXPECT_EQ(VUtility::UTF8ToWideString(narrow), wide);
  EXPECT_EQ(std::unique_ptr<char[]>(VUtility::WideCharToUTF8(wide)).get(), narrow);
  for (const char* bad : {"ab\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82x", "\xFF"})
    EXPECT_THROW(VUtility::UTF8ToWideString(bad), utf8::exception) << bad;
  for (const wchar_t* bad : {L"a\xFFFFFFFF", L"\xD800", L"\xDFFFz", L"\x110000"})
    EXPECT_THROW(VUtility::WideCharToUTF8(bad), utf8::invalid_code_point);
  EXPECT_TRUE(VUtility::UTF8ToWideChar(nullptr) == nullptr && VUtility::WideCharToUTF8(nullptr) == nullptr);
  EXPECT_EQ(VUtility::UTF8ToWideString(nullptr), L"");
}

TEST(VUtility, ConvertsInTheCurrentLocaleAndEmptiesWhatItCannot) {
  EXPECT_EQ(VUtility::WideCharToString(L"a\u20AC"), "");  // the "C" locale has no such character
  ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
  EXPECT_EQ(VUtility::WideCharToString(L"a\u20AC"s), "a\xE2\x82\xAC");
  EXPECT_EQ(VUtility::StringToWideString("\xE2\x82\xAC z"s), L"\u20AC z");
  EXPECT_EQ(VUtility::StringToWideString("a\xFF") + VUtility::StringToWideString(nullptr), L"");
  EXPECT_EQ(VUtility::ToUpperCase(L"h\u00E9"s) + VUtility::ToLowerCase(L"H\u00C9"s), L"H\u00C9h\u00E9");
  std::setlocale(LC_CTYPE, "C");
  char narrow[] = "aB\xE9\xFF";
  VUtility::ToUpperCase(narrow);
  EXPECT_EQ(narrow + VUtility::ToLowerCase("Q[\xC9"s) + VUtility::ToUpperCase("q{"s), "AB\xE9\xFFq[\xC9Q{");
  EXPECT_THROW(VUtility::WideCharToString(nullptr), std::logic_error);
}

TEST(VUtilityFiles, CopiesEverySizeAroundTheBlock) {
  const TemporaryFolder folder;
  const std::string source = folder.Path("source"), target = folder.Path("target");
  std::string contents;
  for (const std::size_t size : {0U, 1U, 98303U, 98304U, 98305U, 196608U, 200001U}) {
    while (contents.size() < size) contents += static_cast<char>(contents.size() % 251);
    WriteFile(source, contents);
    EXPECT_TRUE(VUtility::CpFile(source, target, true));
    EXPECT_TRUE(ReadFile(target) == contents) << size;
    EXPECT_EQ(VUtility::CpFile(source, "/dev/full", true), size == 0);  // a short one fails at closing
  }
  WriteFile(target, "old");
  EXPECT_FALSE(VUtility::CpFile(source, target, false) || VUtility::CpFile(source.c_str(), nullptr, true) ||
               VUtility::CpFile(folder.Path("none"), target, true) ||
               VUtility::CpFile(source, folder.Path("none/target"), true));
  EXPECT_EQ(ReadFile(target), "old");
  EXPECT_TRUE(VUtility::CpFile(source, folder.Path("other"), false));
  EXPECT_FALSE(VUtility::CpFile(folder.Path(), target, true));  // a folder opens and cannot be read
}

TEST(VUtilityFiles, RemovesAFolderWithoutFollowingLinks) {
  const TemporaryFolder folder;
  const std::string kept = folder.Path("kept"), tree = folder.Path("tree"), link = folder.Path("link");
  EXPECT_TRUE(VUtility::CreateDir(kept, false) && !VUtility::CreateDir(kept, true));
  std::filesystem::create_directories(tree + "/a/b");
  for (const std::string& file : {kept + "/file", tree + "/file", tree + "/a/file"}) WriteFile(file, "x");
  for (const std::string& name : {tree + "/a/link", link}) std::filesystem::create_symlink(kept, name);
  EXPECT_TRUE(VUtility::RemoveDir(tree, false) && std::filesystem::is_empty(tree));
  EXPECT_TRUE(VUtility::RemoveDir(tree + "/", true) && VUtility::FileExists(kept + "/file"));
  EXPECT_FALSE(VUtility::RemoveDir(link, true));  // named itself it is emptied, but it is no folder to remove
  EXPECT_FALSE(VUtility::FileExists(kept + "/file"));
  EXPECT_TRUE(VUtility::DelFile(link) && VUtility::DirectoryExists(kept) && VUtility::FileExists(kept));
  for (const char* none : {static_cast<const char*>(nullptr), "", tree.c_str()}) {
    EXPECT_FALSE(VUtility::RemoveDir(none, false) || VUtility::DelFile(none) || VUtility::FileExists(none));
    EXPECT_FALSE(VUtility::DirectoryExists(none) || VUtility::SetCurrentDir(none));
  }
}

TEST(VUtilityFiles, ListsFoldersByNameAndEntersThem) {
  const std::filesystem::path before = std::filesystem::current_path();
  const TemporaryFolder folder;
  WriteFile(folder.Path("b"), "");
  VUtility::CreateDir(folder.Path("c"), false);
  std::filesystem::create_symlink("c", folder.Path("a"));
  EXPECT_EQ(VUtility::DirList(folder.Path()), ".\n..\na\nb\nc\n");
  const std::string typed = "<DIR>  .\n<DIR>  ..\n<FILE> a\n<FILE> b\n<DIR>  c\n";
  EXPECT_TRUE(VUtility::SetCurrentDir(folder.Path()));
  EXPECT_EQ(VUtility::DirListType("") + VUtility::DirListType(nullptr), typed + typed);
  EXPECT_EQ(VUtility::DirListTypeArray("./"s).at(2), "<FILE> a");
  EXPECT_EQ(VUtility::DirListType(folder.Path("none")) + VUtility::DirList("b"), "");

  const std::string longName(255 - std::filesystem::current_path().string().size() - 1, 'x');
  std::filesystem::create_directories(longName + "/y");
  EXPECT_TRUE(VUtility::SetCurrentDir(longName));
  EXPECT_EQ(VUtility::GetCurrentDir(), std::filesystem::current_path());
  EXPECT_TRUE(VUtility::SetCurrentDir("y") && VUtility::GetCurrentDir().empty());
  std::filesystem::current_path(before);
}

TEST(VUtilityFiles, LogsAndPassesOverAFullDisk) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("log");
  for (const char* text : {"one\n", "", "2"}) EXPECT_TRUE(VUtility::LogFile(path, text));
  EXPECT_EQ(ReadFile(path), "one\n2");
  EXPECT_TRUE(VUtility::LogFile("/dev/full", "lost"));  // intended: only opening counts
  EXPECT_FALSE(VUtility::LogFile(folder.Path(), "lost"));
  EXPECT_FALSE(VUtility::LogFile(nullptr, "lost") || VUtility::LogFile(path.c_str(), nullptr));
}
