#include "tav_commandline.h"

#include <gmock/gmock.h>

namespace tavon {
namespace {

// All arguments of a line, which only answers look-ups: from the first one on, each is the value of the one
// before it. No argument may come twice.
std::vector<std::string> ArgumentsOf(const char* text, const std::string& first) {
  const tavCommandLine line(text);
  std::vector<std::string> arguments{first};
  for (tavString value; line.GetArgument(arguments.back(), &value) && !value.empty();)
    arguments.push_back(value);
  return arguments;
}

struct SplitCase {
  const char* text;
  std::vector<std::string> arguments;
};

TEST(TavCommandLine, SplitsATextAtBlanksOutsideOfQuotes) {
  const SplitCase cases[] = {
      {"  run  -id   42  ", {"run", "-id", "42"}},
      {R"(run "a  b" c)", {"run", "a b", "c"}},   // runs of blanks become one in quotes, too
      {R"(run ""a b"" c)", {"run", "a b", "c"}},  // quotes next to a quote belong to it
      {R"(run "a b"c d)", {"run", "a b", "c", "d"}},
      {R"(run a"b c" d)", {"run", R"(a"b)", R"(c")", "d"}},  // a quote within a word is a letter
      {R"(run a "b c)", {"run", "a"}},                       // never closed: the list ends before it
      {R"("run it" b)", {R"("run)", R"(it")", "b"}},         // the first argument is never quoted
  };
  for (const SplitCase& c : cases) EXPECT_EQ(ArgumentsOf(c.text, c.arguments[0]), c.arguments) << c.text;
}

TEST(TavCommandLine, TakesNothingForOneEmptyArgument) {
  for (const char* nothing : {"", "   ", static_cast<const char*>(nullptr)})
    EXPECT_TRUE(tavCommandLine(nothing).GetArgument("", nullptr));
}

// The arguments of a program, the first being its name.
struct TavCommandLineOfArguments : testing::Test {
  std::string texts[3] = {"-ID", "-id", "-val"};
  char* argv[3] = {texts[0].data(), texts[1].data(), texts[2].data()};
  const tavCommandLine line{argv, 3};
  tavString value = "old";
};

TEST_F(TavCommandLineOfArguments, FindsTheFirstOneInAnyCaseBeginningWithTheProgramsName) {
  EXPECT_TRUE(line.GetArgument("-id", &value));
  EXPECT_EQ(value, "-id");
}

TEST_F(TavCommandLineOfArguments, HasNoValueBehindTheLastOne) {
  EXPECT_TRUE(line.GetArgument("-VAL", &value));
  EXPECT_EQ(value, "");
}

TEST_F(TavCommandLineOfArguments, HasNoValueForAnAbsentOne) {
  EXPECT_FALSE(line.GetArgument("-va", &value));
  EXPECT_EQ(value, "");
}

}  // namespace
}  // namespace tavon
