// What classes that programs derive from the types may rely on.
#include "model_test.h"
#include "test_clock.h"

using std::chrono_literals::operator""ms;

namespace {

// The common getter of both text types.
struct DecoratedCamera : tavParameterCamera {
  tavString ValueToString() const override { return "<" + GetLocalUrl() + ">"; }
};

TEST(DerivedClasses, DecorateATextWithItsGetter) {
  DecoratedCamera camera;
  camera.SetLocalUrl("url");
  EXPECT_EQ(camera.ValueToString(), "<url>");
}

// Stores what it is given, unlike a shutter's own SetData.
struct PlainShutter : tavParameterShutter {
  ~PlainShutter() override { term_thread(); }
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override {
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

TEST(DerivedClasses, AThreadOfTheProgramThatDoesAShuttersWorkCanBeStopped) {
  tavParameterShutter shutter;
  VThread thread(tavParameterShutter::thread_procedure, &shutter, false);
  ASSERT_TRUE(thread.Start(0));
  thread.Stop();
  EXPECT_FALSE(thread.Running());
}

}  // namespace
