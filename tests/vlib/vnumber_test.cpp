#include "vnumber.h"

#include <gtest/gtest.h>

#include <clocale>

namespace {

TEST(VNumber, LeavesTheThreadInItsOwnLocaleWhenItPrintsARealNumber) {
  const locale_t own = newlocale(LC_ALL_MASK, "C.UTF-8", nullptr);
  ASSERT_NE(own, nullptr);
  const locale_t before = uselocale(own);
  EXPECT_EQ(vlib::PrintReal(0.25, 2), "0.25");
  EXPECT_EQ(uselocale(before), own);
  freelocale(own);
}

}  // namespace
