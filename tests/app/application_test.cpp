#include "application.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// An application whose fields can be looked at.
class TestedApplication : public Application {
 public:
  using Application::Id;
  using Application::Password;
  using Application::Port;
  using Application::Type;
  using Application::Value;

  // Init with the path of the program and its options.
  unsigned int Start(std::vector<std::string> arguments) {
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    return Init(static_cast<int>(argv.size()), argv.data());
  }
};

TEST(Application, TakesWhateverFollowsAnOptionAsItsValue) {
  TestedApplication application;
  ASSERT_EQ(application.Start({"ura_event", "-ap", "3000000000", "-id", "-val", "5", "-type", "-p"}), 0U);
  EXPECT_EQ(application.Port, 2147483647) << "the largest that there is";
  EXPECT_EQ(application.Id, 0U) << "what \"-val\" is as a number";
  EXPECT_EQ(application.Value, "5");
  EXPECT_EQ(application.Type, "-p");
  EXPECT_EQ(application.Password, "") << "present, with nothing behind it";
}

}  // namespace
