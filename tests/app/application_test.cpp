#include "application.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <map>

namespace {

class TestedApplication : public Application {
 public:
  using Application::Address, Application::Id, Application::Password, Application::Port, Application::Type,
      Application::User, Application::Value;

  unsigned int InitWith(std::vector<std::string> arguments) {
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    return Init(static_cast<int>(argv.size()), argv.data());
  }
};

TEST(Application, DescribesItself) {
  const Application application;
  EXPECT_THAT(application.GetInfo(),
              testing::MatchesRegex("\nName ---------- : tavon Ura event\nVersion ------- : 1.5.1\n"
                                    "Build --------- : [A-Z][a-z]+ [ 0-9]+\n"
                                    "Description --- : Event dispatcher for ura system\n(.* : .*\n)+"));
}

TEST(Application, FillsWhatIsNotGiven) {
  TestedApplication application;
  ASSERT_EQ(application.InitWith({"ura_event", "-id", "4294967297", "-val", "v", "-type", "t"}), 0u);
  EXPECT_EQ(application.User + "," + application.Password + "," + application.Address,
            "__ura_event__,kalnor357,localhost");
  EXPECT_EQ(application.Port, 16548);
  EXPECT_EQ(application.Id, 4294967295u) << "stops at 32 bits";
  EXPECT_EQ(application.Value + application.Type, "vt");
  EXPECT_EQ(application.Term(), 0u);
}

TEST(Application, TakesWhateverFollowsAnOption) {
  TestedApplication application;
  ASSERT_EQ(
      application.InitWith({"ura_event", "-AP", "3000000000", "-a", "-u", "-id", "-val", "5", "-type", "-p"}),
      0u);
  EXPECT_EQ(application.Port, INT32_MAX);
  EXPECT_EQ(application.Address + application.User + application.Type, "-u-id-p");
  EXPECT_EQ(application.Id, 0u);
  EXPECT_EQ(application.Value, "5");
  EXPECT_EQ(application.Password, "") << "present, with nothing behind it";
}

TEST(Application, ResolvesTheProgramsPath) {
  const std::string parent = std::filesystem::current_path().parent_path();
  const std::string high = "../../../../../../../../../../../../../../../../";
  TestedApplication application;
  for (const auto& [path, expected] :
       std::map<std::string, std::string>{{"./../bin/ura_event", parent + "/bin/ura_event"},
                                          {"bin/ura_event", "bin/ura_event"},
                                          {high + high + "x", "/x"}}) {
    application.InitWith({path, "-id", "1", "-val", "1", "-type", "t"});
    EXPECT_EQ(application.GetFullPath(), expected) << "there is nothing above the root";
  }
}

}  // namespace
