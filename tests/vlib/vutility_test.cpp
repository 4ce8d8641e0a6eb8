#include "vutility.h"

#include <gtest/gtest.h>

#include <clocale>
#include <filesystem>

#include "temporary_folder.h"

namespace {

TEST(VUtility, TakesPathsApart) {
  const struct {
    const char* path;
    const char* folder;
    const char* file;
    const char* extension;
  } cases[] = {
      {"a/b/c.txt", "a/b", "c.txt", "txt"}, {"/c.x", "", "c.x", "x"}, {"plain", "", "plain", "plain"},
      {"a.b/c/", "a.b/c", "", "b/c/"},      {"", "", "", ""},         {nullptr, "", "", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.path);
    EXPECT_EQ(VUtility::ExtractFilePath(c.path), c.folder);
    EXPECT_EQ(VUtility::ExtractFileName(c.path), c.file);
    EXPECT_EQ(VUtility::ExtractFileExt(c.path), c.extension);
  }
}

struct VUtilityLocale : testing::Test {
  VUtilityLocale() { EXPECT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr); }
  ~VUtilityLocale() override { std::setlocale(LC_CTYPE, "C"); }
};

TEST_F(VUtilityLocale, DecidesHowTextIsConverted) {
  EXPECT_EQ(VUtility::StringToWideString("\xE2\x82\xAC z"), L"\u20AC z");
  EXPECT_EQ(VUtility::WideCharToString(L"a\u20AC"), "a\xE2\x82\xAC");
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

TEST_F(VUtilityFiles, CopyFailsOnADiskThatTurnsOutFullAtTheEnd) {
  WriteFile(source, "x");
  EXPECT_FALSE(VUtility::CpFile(source, "/dev/full", true));
}

TEST_F(VUtilityFiles, RemovesLinksInAFolderAndNotWhereTheyLead) {
  VUtility::CreateDir(source, false);
  WriteFile(source + "/file", "kept");
  VUtility::CreateDir(target, false);
  std::filesystem::create_directory_symlink(source, target + "/link");
  EXPECT_TRUE(VUtility::RemoveDir(target, true));
  EXPECT_EQ(ReadFile(source + "/file"), "kept");
}

TEST_F(VUtilityFiles, ListsAFolderByName) {
  WriteFile(folder.Path("b"), "");
  VUtility::CreateDir(folder.Path("c"), false);
  std::filesystem::create_directory_symlink("c", folder.Path("a"));
  EXPECT_EQ(VUtility::DirList(folder.Path()), ".\n..\na\nb\nc\n");
  EXPECT_EQ(VUtility::DirListType(folder.Path()), "<DIR>  .\n<DIR>  ..\n<FILE> a\n<FILE> b\n<DIR>  c\n");
  EXPECT_EQ(VUtility::DirList(folder.Path("b")), "") << "which is no folder";
}

}  // namespace
