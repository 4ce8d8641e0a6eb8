// A scene: building, playing, repeating and stopping it.
//
// usage: scene

#include <cstdio>

#include "tav_parameterbyte.h"
#include "tav_parameterslider.h"
#include "tav_parameterswitch.h"
#include "tav_parametervrscene.h"
#include "vevent.h"
#include "vthread.h"

using namespace tavon;

// Says what the scene does. The hooks run on the scene's own thread, so the destructor ends that thread
// first.
class Evening : public tavParameterVRScene {
 public:
  ~Evening() override { delete_scene(); }

  // Plays once or repeatedly. A scene hears a request only while it waits for one: neither just after it was
  // built, when its thread is still starting, nor in the 100 ms after a play. So the request is repeated
  // until the first parameter has been set.
  void Play(unsigned char value) {
    m_begun.Reset();
    SetValue(value);
    while (!m_begun.Wait(20UL)) RepeatRequest();
  }

  void WaitForEnd() { m_ended.Wait(); }

 private:
  void OnParameterSet(tavIParameter* parameter) override {
    std::printf("%s is %s\n", parameter->ToString().c_str(), parameter->ValueToString().c_str());
    m_begun.Signal();
  }
  void OnPlayFinish() override {
    std::printf("played to the end\n");
    m_ended.Signal();
  }

  VEvent m_begun;
  VEvent m_ended;
};

int main() {
  // The parameters outlive the scene that sets them: they are made first.
  tavParameterSwitch lamp;
  tavParameterSlider dimmer;
  lamp.SetName(L"Lamp");
  dimmer.SetName(L"Dimmer");

  Evening evening;
  const unsigned char on = 1, off = 0;
  const unsigned char half[] = {0x00, 0x00, 0x00, 0x3F};  // 0.5 as a little-endian float
  evening.BuildScene_Begin();
  evening.BuildScene_AddSetParameter(&lamp, &on, 1);
  evening.BuildScene_AddWait(50);  // ms; because of it the scene is played on a thread of its own
  evening.BuildScene_AddSetParameter(&dimmer, half, 4);
  evening.BuildScene_AddSetParameter(&lamp, &off, 1);
  evening.BuildScene_End();

  std::printf("-- once\n");
  evening.Play(1);
  evening.WaitForEnd();

  std::printf("-- repeatedly, until it is stopped\n");
  evening.Play(2);
  VThread::SleepM(150);
  evening.SetValue(0);  // ends a wait at once; a stopped play does not call OnPlayFinish
  std::printf("stopped\n");
}
