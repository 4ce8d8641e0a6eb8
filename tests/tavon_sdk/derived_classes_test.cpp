// What classes that programs derive from the types may rely on.
#include <gtest/gtest.h>

#include "tav_parameterbyte.h"
#include "tav_parametercolor.h"
#include "tav_parametershutter.h"
#include "tav_parameterthermo.h"
#include "test_clock.h"
#include "vevent.h"

using std::chrono_literals::operator""ms;

namespace tavon {
namespace {

// A value that is not stored but asked for.
template <class Parameter>
struct Live : Parameter {
  const unsigned char* GetData() const override { return data; }
  const unsigned char data[4] = {7, 0, 0x80, 0x3F};
};
template <class Parameter>
struct LiveValue : testing::Test {};
using TypesWithBytes = testing::Types<tavParameterByte, tavParameterThermo, tavParameterColor>;
TYPED_TEST_SUITE(LiveValue, TypesWithBytes);

TYPED_TEST(LiveValue, IsWhatComparisonsSee) {
  const Live<TypeParam> parameter;
  EXPECT_TRUE(parameter.Comparison(tavCodeOperator_Equal, parameter.data, 4));
}

// Stores what it is given, unlike a shutter's own SetData.
struct PlainShutter : tavParameterShutter {
  ~PlainShutter() override { term_thread(); }
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override {
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): that a class may pass over its base is the point
    tavTParameter<1>::SetData(data, size, flag);
  }
  void OnStop() override { stopped.Signal(); }
  VEvent stopped;
};

TEST(DerivedClasses, AShutterWithASetDataOfItsOwnIsStopped) {
  TestClock clock(TestClock::Utc(2014, 4, 8, 10, 0, 0));
  PlainShutter shutter;
  shutter.SetValue(3);
  TestClock::AwaitSleepers(1);
  clock.Advance(250ms);
  TestClock::AwaitSleepers(1);
  EXPECT_TRUE(shutter.stopped.Wait(0));
  EXPECT_EQ(shutter.GetValue(), 2);
}

}  // namespace
}  // namespace tavon
