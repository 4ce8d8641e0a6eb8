// What the transcript checked_values cannot show of the strict reading of values.
#include <gtest/gtest.h>

#include "tav_parameterfactory.h"
#include "tav_valuecheck.h"

namespace tavon {
namespace {

// A type that says nothing about its texts leaves them to its encoder.
TEST(ValueCheck, OfATypeWithoutASyntaxTakesAnyText) {
  const tavParameterType type{.id = tavObject_None, .name = "", .source = "", .size = 1, .encode = nullptr};
  EXPECT_EQ(tavCheckValue(type, " 7x"), " 7x");
  EXPECT_EQ(tavCheckValue(type, ""), std::nullopt);
  EXPECT_EQ(tavPossibleValues(type), "any text");
}

// A new type must not forget to say what its texts are.
TEST(ValueCheck, KnowsTheSyntaxOfEveryType) {
  for (const tavParameterType* type : tavParameterFactory::GetTypes()) {
    EXPECT_NE(type->syntax.form, tavValueForm_Any) << type->name;
  }
}

}  // namespace
}  // namespace tavon
