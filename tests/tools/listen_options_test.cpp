#include "listen_options.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "captured_output.h"
#include "failing_allocation.h"

TEST(ListenOptions, WithoutMemoryForTheParameterEndTheProgram) {
  char program[] = "ura_listen", option[] = "-type", type[] = "ParameterByte";
  char* arguments[] = {program, option, type};
  for (int count = 0;; ++count) {
    SCOPED_TRACE(count);
    ListenOptions options;
    std::optional<int> status = EXIT_FAILURE;  // what main makes of an exception
    bool hasHappened = false;
    CapturedOutput([&] {
      const auto shortage = FailingAllocation::After(count);
      try {
        status = ReadListenOptions(3, arguments, options);
      } catch (const std::bad_alloc&) {
      }
      hasHappened = shortage.HasHappened();
    });
    if (!hasHappened) break;
    EXPECT_EQ(status.value_or(EXIT_SUCCESS), options.parameter ? EXIT_SUCCESS : EXIT_FAILURE);
  }
}
