#include "tav_commandline.h"

#include <gmock/gmock.h>

using tavon::tavCommandLine;
using tavon::tavString;
using testing::ElementsAreArray;

namespace {

using Arguments = std::vector<std::string>;

// A command line knows look-ups only: each argument is the value of the one before it, from a marker on.
Arguments ArgumentsOf(std::string text) {
  Arguments arguments;
  std::vector<std::string> seen;
  const tavCommandLine line(text.c_str());
  tavString value;
  tavString name = text.substr(0, text.find(' '));
  while (line.GetArgument(name, &value) && arguments.size() < 20) {
    arguments.push_back(name);
    if (value.empty()) break;
    name = value;
  }
  return arguments;
}

TEST(TavCommandLine, SplitsOneText) {
  const std::pair<const char*, Arguments> cases[] = {
      {"run", {"run"}},
      {"run  -id   42", {"run", "-id", "42"}},
      {"run \"a  b\" c", {"run", "a b", "c"}},     // runs of blanks count as one inside quotes too
      {"run \"\"a b\"\" c", {"run", "a b", "c"}},  // quotes next to a quote belong to it
      {"run \"a b\"c d", {"run", "a b", "c", "d"}},
      {"run \"a b\"", {"run", "a b"}},
      {"run a \"b c", {"run", "a"}},  // never closed: the list ends before it
      {"run \"\"", {"run"}},
      {"run a\"b c\" d", {"run", "a\"b", "c\"", "d"}},
      {"\"run it\" b", {"\"run", "it\"", "b"}},  // the first argument is never quoted
  };
  for (const auto& [text, expected] : cases)
    EXPECT_THAT(ArgumentsOf(text), ElementsAreArray(expected)) << text;
}

TEST(TavCommandLine, TrimsAndAcceptsEmptyText) {
  tavString value;
  EXPECT_TRUE(tavCommandLine("  a b  ").GetArgument("a", &value));
  EXPECT_EQ(value, "b");
  for (const char* nothing : {"", "   ", static_cast<const char*>(nullptr)}) {
    EXPECT_TRUE(tavCommandLine(nothing).GetArgument("", &value)) << "one empty argument";
    EXPECT_FALSE(tavCommandLine(nothing).GetArgument(" ", nullptr));
  }
}

TEST(TavCommandLine, FindsTheFirstArgumentOfAnyPlace) {
  std::string texts[] = {"-ID", "-id", "-val", "5", "-val"};
  char* argv[] = {texts[0].data(), texts[1].data(), texts[2].data(), texts[3].data(), texts[4].data()};
  const tavCommandLine line(argv, 5);
  tavString value = "old";
  EXPECT_TRUE(line.GetArgument("-id", &value));
  EXPECT_EQ(value, "-id") << "the program's name counts, and any argument is a value";
  EXPECT_TRUE(line.GetArgument("-VAL", &value));
  EXPECT_EQ(value, "5");
  EXPECT_FALSE(line.GetArgument("-va", &value));
  EXPECT_EQ(value, "");
  EXPECT_TRUE(tavCommandLine(argv, 1).GetArgument("-id", &value));
  EXPECT_EQ(value, "");
  EXPECT_FALSE(tavCommandLine(argv, -1).GetArgument("-id", nullptr));
}

}  // namespace
