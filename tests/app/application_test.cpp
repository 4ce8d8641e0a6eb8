#include "application.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "captured_output.h"

namespace {

// An application whose fields can be looked at.
class TestedApplication : public Application {
 public:
  using Application::Address;
  using Application::Id;
  using Application::Password;
  using Application::Port;
  using Application::Type;
  using Application::User;
  using Application::Value;

  // Init with the path of the program and its options.
  unsigned int Start(std::vector<std::string> arguments) {
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    return Init(static_cast<int>(argv.size()), argv.data());
  }
};

TEST(Application, TellsWhatItIs) {
  EXPECT_THAT(Application().GetInfo(),
              testing::MatchesRegex("\nName ---------- : tavon Ura event"
                                    "\nVersion ------- : [0-9.]+"
                                    "\nBuild --------- : [A-Z][a-z][a-z] [0-9 ][0-9] [0-9]+"
                                    "\nDescription --- : Event dispatcher for ura system"
                                    "\nMaker --------- : The Ura project"
                                    "\nCopyright ----- : The Ura project"
                                    "\nOwner --------- : The Ura project\n"));
}

TEST(Application, TakesWhateverFollowsAnOptionAsItsValue) {
  TestedApplication application;
  ASSERT_EQ(application.Start({"ura_event", "-ap", "3000000000", "-id", "-val", "5", "-type", "-p"}), 0U);
  EXPECT_EQ(application.Port, 2147483647) << "the largest that there is";
  EXPECT_EQ(application.Id, 0U) << "what \"-val\" is as a number";
  EXPECT_EQ(application.Value, "5");
  EXPECT_EQ(application.Type, "-p");
  EXPECT_EQ(application.Password, "") << "present, with nothing behind it";
}

TEST(Application, HasASenderAndAServerThatDoNotCountUnlessTheyAreGiven) {
  TestedApplication application;
  ASSERT_EQ(application.Start({"ura_event", "-id", "1", "-val", "1", "-type", "Any"}), 0U);
  EXPECT_EQ(application.User, "__ura_event__");
  EXPECT_EQ(application.Password, "kalnor357");
  EXPECT_EQ(application.Address, "localhost");
  EXPECT_EQ(application.Port, 16548);
}

TEST(Application, KeepsTheLogOffWithoutANameForIt) {
  TestedApplication application;
  ASSERT_EQ(application.Start({"ura_event", "-log", "", "-id", "1", "-val", "1", "-type", "Any"}), 0U);
  EXPECT_EQ(tavon::tavError::Level, tavon::tavLogLevel_Console);
  EXPECT_EQ(tavon::tavError::LogFile, "tav_system.log");
}

TEST(Application, KnowsItsPathHoweverFewArgumentsAreCounted) {
  TestedApplication application;
  char path[] = "/usr/bin/ura_event";
  char* arguments[] = {path, nullptr};
  CapturedOutput([&] { application.Init(0, arguments); });  // which lacks its options
  EXPECT_EQ(application.GetFullPath(), "/usr/bin/ura_event");
}

}  // namespace
