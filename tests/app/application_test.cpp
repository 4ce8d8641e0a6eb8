#include "application.h"

#include <gmock/gmock.h>

#include <filesystem>

struct TestedApplication : Application {
  // What Init makes of the arguments.
  std::string InitWith(std::vector<std::string> arguments) {
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    EXPECT_EQ(Init(static_cast<int>(argv.size()), argv.data()) + Term(), 0U);
    const std::string numbers = std::to_string(Id) + "," + std::to_string(Port) + ",";
    return numbers + Value + "," + Type + "," + User + "," + Password + "," + Address;
  }
};

TEST(Application, DescribesItself) {
  const Application application;
  EXPECT_THAT(application.GetInfo(),
              testing::MatchesRegex("\nName ---------- : tavon Ura event\nVersion ------- : 1.5.1\n"
                                    "Build --------- : [A-Z][a-z]+ [ 0-9]+\n"
                                    "Description --- : Event dispatcher for ura system\n(.* : .*\n)+"));
}

TEST(Application, FillsWhatIsNotGivenAndTakesWhateverFollowsAnOption) {
  TestedApplication application;
  EXPECT_EQ(application.InitWith({"ura_event", "-id", "4294967297", "-val", "v", "-type", "t"}),
            "4294967295,16548,v,t,__ura_event__,kalnor357,localhost");  // numbers stop at 32 bits
  EXPECT_EQ(
      application.InitWith({"ura_event", "-AP", "3000000000", "-a", "-u", "-id", "-val", "5", "-type", "-p"}),
      "0,2147483647,5,-p,-id,,-u");  // a password that is present, with nothing behind it, is empty
}

TEST(Application, ResolvesTheProgramsPath) {
  const std::string before = std::filesystem::current_path();
  const std::tuple<const char*, const char*, const char*> cases[] = {{"/usr/lib", "./../bin/x", "/usr/bin/x"},
                                                                     {"/usr", "bin/x", "bin/x"},
                                                                     {"/", "./x", "/x"},
                                                                     {"/usr", "../../x", "/x"}};
  TestedApplication application;
  for (const auto& [folder, path, expected] : cases) {
    std::filesystem::current_path(folder);
    application.InitWith({path, "-id", "1", "-val", "1", "-type", "t"});
    EXPECT_EQ(application.GetFullPath(), expected) << "there is nothing above the root";
  }
  std::filesystem::current_path(before);
}
