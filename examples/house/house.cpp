// A small house that does what an Ura server does: it receives events, keeps parameters, and survives a
// restart.
//
// usage: house [STATE [LOG]]    (files for the values and for errors; house.state and house.log unless given)
// Then, in another terminal: ura_event -id 1 -val 1 -type ParameterSwitch

#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "dro_osfile.h"
#include "dro_osudpsocket.h"
#include "dro_time.h"
#include "tav_house.h"
#include "tav_parameteralert.h"
#include "tav_parametercolor.h"
#include "tav_parameterinfo.h"
#include "tav_parametershutter.h"
#include "tav_parameterslider.h"
#include "tav_parameterswitch.h"
#include "tav_parameterthermochronoweek.h"
#include "tav_parametervrscene.h"

using namespace tavon;

// Three parameters with hooks. A class whose hook runs on the parameter's thread ends that thread first thing
// in its destructor, or the hook could meet half an object.
struct SmokeDetector : tavParameterAlert {
  void OnAlert() override { std::printf("ALARM: smoke\n"); }
};

struct Blind : tavParameterShutter {
  Blind() { SetActionTime(1000); }  // ms from end to end
  ~Blind() override { term_thread(); }
  void OnStop() override { std::printf("the blind has stopped\n"); }
};

struct Heating : tavParameterThermoChronoWeek {
  Heating() {
    SetOffsetTime(1100);  // each hour's set-point is applied once, just after the hour has begun
    tavString week = "0";
    for (int hour = 0; hour < 7 * 24; ++hour) week += hour % 24 < 6 ? ",17.5" : ",20.5";
    SetDataFromString(week);
  }
  ~Heating() override { term_thread(); }
  void OnChangeTemperature() override { std::printf("heat to %.1f degrees\n", GetCurrentTemperature()); }
};

// What is added last goes first: the switch before the slider that it moves, the scene before what it sets.
static void Furnish(tavHouse& house) {
  auto& dimmer = *house.Make<tavParameterSlider>(2, L"Dimmer");
  auto& lamp = *house.Make<tavParameterSwitch>(1, L"Lamp");
  auto& colour = *house.Make<tavParameterColor>(3, L"Colour");
  auto& blind = *house.Make<Blind>(4, L"Blind");
  house.Make<SmokeDetector>(5, L"Smoke");
  house.Make<Heating>(6, L"Heating");
  auto& evening = *house.Make<tavParameterVRScene>(7, L"Evening");
  house.Make<tavParameterInfo>(8, L"Door");

  const unsigned char off = 0, on = 1, dark[4] = {}, full[4] = {0, 0, 0x80, 0x3F};  // 0.0 and 1.0
  lamp.SetDrivenTarget(&dimmer);
  lamp.AddDrivenMapItem(tavCodeOperator_Equal, &off, 1, dark, 4);
  lamp.AddDrivenMapItem(tavCodeOperator_Equal, &on, 1, full, 4);

  const unsigned char orange[4] = {0xFF, 0x80}, down = 3;
  evening.BuildScene_Begin();
  evening.BuildScene_AddSetParameter(&colour, orange, 4);
  evening.BuildScene_AddWait(100);
  evening.BuildScene_AddSetParameter(&blind, &down, 1);
  evening.BuildScene_End();
}

// Errors go to a file. Those of the OS library have their time already.
static void LogTo(const char* path) {
  dro::droError::Level = dro::droLogLevel_File;
  dro::droError::LogFile = path;
  tavError::Level = tavLogLevel_CallBack;
  tavError::ShowErrorCallBack = [](const tavError& error) {
    dro::droOsFile::AppendToFile(dro::droError::LogFile, "[%s]\n%s", dro::droTime::GetDateTime().c_str(),
                                 error.GetDescription().c_str());
  };
}

// True if systemd has handed the bound socket over, as descriptor 3: it stays open while the house restarts.
static bool IsActivated() {
  const char* const process = std::getenv("LISTEN_PID");
  const char* const sockets = std::getenv("LISTEN_FDS");
  return process != nullptr && sockets != nullptr && std::atol(process) == getpid() &&
         std::atol(sockets) == 1;
}

static void Print(const tavIParameter& changed) {
  std::printf("%s = %.30s\n", changed.ToString().c_str(), changed.ValueToString().c_str());
}

int main(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  // Ctrl-C and the system's request to end are held back until the loop asks. First of all: threads inherit
  // this.
  sigset_t ends;
  sigemptyset(&ends);
  sigaddset(&ends, SIGINT);
  sigaddset(&ends, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &ends, nullptr);
  const char* const state = argc > 1 ? argv[1] : "house.state";
  LogTo(argc > 2 ? argv[2] : "house.log");

  const bool isActivated = IsActivated();
  dro::droOsUdpSocket socket(dro::droOsSocketType_Udp,
                             isActivated ? 3 : ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  if (!isActivated && socket.Bind("localhost", tavEvent::Port) != dro::droError_NoError) return 1;
  tavHouse house;
  Furnish(house);
  // What could not be restored stays for a person to mend: the next save would replace it.
  if (house.Restore(state) != tavError_NoError) std::rename(state, (tavString(state) + ".bad").c_str());
  std::printf("the house is ready\n");

  bool hasChanged = false;
  bool isSaved = true;
  std::chrono::steady_clock::time_point nextSave;
  for (const timespec noWait{}; sigtimedwait(&ends, nullptr, &noWait) < 0;) {
    // Links and scenes make others dirty: after a change the house looks again at once.
    if (socket.IsReadyToReceive(hasChanged ? 0 : 100)) {
      tavEvent::Buffer buffer;
      const int size = socket.Receive(buffer.data(), buffer.size(), nullptr, nullptr);
      const auto event = tavEvent::FromDatagram(buffer.data(), size);
      if (event && house.Apply(*event) == tavHouse::Result::NoSuchParameter) {
        std::printf("no parameter has the id %u\n", event->GetId());
      }
    }
    hasChanged = house.TakeOver(Print) != 0;
    if (hasChanged) isSaved = false;
    const auto now = std::chrono::steady_clock::now();
    if (isSaved || now < nextSave) continue;
    isSaved = house.Save(state) == tavError_NoError;
    nextSave = now + std::chrono::seconds(5);
  }
  house.TakeOver(Print);              // what the last links have set
  if (isActivated) socket.Release();  // to close it would end receiving for the next house, too
  return house.Save(state) == tavError_NoError ? 0 : 1;
}
