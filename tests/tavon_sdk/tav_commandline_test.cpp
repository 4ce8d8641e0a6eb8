#include "tav_commandline.h"

#include <gmock/gmock.h>

using tavon::tavCommandLine;
using tavon::tavString;
using testing::ElementsAreArray;

namespace {

using Arguments = std::vector<std::string>;

// A command line answers look-ups only: from the first argument on, each is the value of the one before it.
Arguments ArgumentsOf(const std::string& text) {
  const tavCommandLine line(text.c_str());
  Arguments arguments{text.substr(0, text.find(' '))};
  for (tavString value; line.GetArgument(arguments.back(), &value) && !value.empty();)
    arguments.push_back(value);
  return arguments;
}

TEST(TavCommandLine, SplitsOneText) {
  const std::pair<const char*, Arguments> cases[] = {
      {"run", {"run"}},
      {"run  -id   42  ", {"run", "-id", "42"}},
      {R"(run "a  b" c)", {"run", "a b", "c"}},   // runs of blanks count as one inside quotes too
      {R"(run ""a b"" c)", {"run", "a b", "c"}},  // quotes next to a quote belong to it
      {R"(run "a b"c d)", {"run", "a b", "c", "d"}},
      {R"(run "a b")", {"run", "a b"}},
      {R"(run a "b c)", {"run", "a"}},  // never closed: the list ends before it
      {R"(run "")", {"run"}},
      {R"(run a"b c" d)", {"run", R"(a"b)", R"(c")", "d"}},
      {R"("run it" b)", {R"("run)", R"(it")", "b"}},  // the first argument is never quoted
  };
  for (const auto& [text, expected] : cases)
    EXPECT_THAT(ArgumentsOf(text), ElementsAreArray(expected)) << text;
}

TEST(TavCommandLine, TakesNothingForOneEmptyArgument) {
  for (const char* nothing : {"", "   ", static_cast<const char*>(nullptr)}) {
    const tavCommandLine line(nothing);
    EXPECT_TRUE(line.GetArgument("", nullptr) && !line.GetArgument(" ", nullptr));
  }
}

TEST(TavCommandLine, FindsTheFirstArgumentOfAnyPlace) {
  std::string texts[] = {"-ID", "-id", "-val"};
  char* argv[] = {texts[0].data(), texts[1].data(), texts[2].data()};
  const tavCommandLine line(argv, 3);
  tavString value;
  EXPECT_TRUE(line.GetArgument("-id", &value) && value == "-id") << "the program's name and any value count";
  EXPECT_FALSE(line.GetArgument("-va", &value) || !value.empty());
  value = "old";
  EXPECT_TRUE(line.GetArgument("-VAL", &value) && value.empty());
  EXPECT_FALSE(tavCommandLine(argv, -1).GetArgument("-id", nullptr));
}

}  // namespace
