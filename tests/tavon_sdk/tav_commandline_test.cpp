#include "tav_commandline.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace tavon {
namespace {

// The arguments of a command text that follow "run". Each is found as the value of the one before it, so none
// may come twice.
std::vector<std::string> ArgumentsOf(const std::string& text) {
  const std::string command = "run " + text;
  const tavCommandLine line = command.c_str();
  std::vector<std::string> arguments;
  tavString last = "run";
  while (line.GetArgument(tavString(last), &last) && !last.empty()) arguments.push_back(last);
  return arguments;
}

TEST(TavCommandLine, SplitsATextAtBlanksOutsideOfQuotes) {
  EXPECT_THAT(ArgumentsOf("  -id   42  "), ElementsAre("-id", "42"));
  EXPECT_THAT(ArgumentsOf(R"("a  b"c "" d")"), ElementsAre("a b", "c", " d"))
      << "runs of blanks and of quotes";
  EXPECT_THAT(ArgumentsOf(R"("a b" c "d e")"), ElementsAre("a b", "c", "d e"));
  EXPECT_THAT(ArgumentsOf(R"(a"b c" d)"), ElementsAre(R"(a"b)", R"(c")", "d")) << "quotes within a word";
  EXPECT_THAT(ArgumentsOf(R"(a "b c)"), ElementsAre("a")) << "never closed: the list ends before it";
}

TEST(TavCommandLine, FindsTheFirstArgumentInAnyCaseBeginningWithTheProgramsName) {
  std::string program = "-ID", second = "-id";
  char* const arguments[] = {program.data(), second.data()};
  const tavCommandLine line(arguments, 2);
  tavString value = "old";
  EXPECT_FALSE(line.GetArgument("-i", &value));
  EXPECT_EQ(value, "");
  EXPECT_TRUE(line.GetArgument("-id", &value));
  EXPECT_EQ(value, "-id");
}

}  // namespace
}  // namespace tavon
