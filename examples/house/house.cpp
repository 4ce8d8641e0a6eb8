// A small house that does what an Ura server does: it receives events and keeps parameters.
//
// usage: house [FILE]    (Ctrl-C ends it and writes the house to FILE as XML; house.xml unless given)
// Then, in another terminal: ura_event -id 1 -val 1 -type ParameterSwitch

#include <netinet/in.h>
#include <sys/socket.h>

#include <csignal>
#include <cstdio>
#include <memory>
#include <vector>

#include "dro_osfile.h"
#include "dro_osudpsocket.h"
#include "tav_parameteralert.h"
#include "tav_parameterfactory.h"
#include "tav_parametershutter.h"
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

// A parameter of a type known by its name. The factory makes those that need no hook.
std::unique_ptr<tavIParameter> Make(const char* type) {
  const tavEObject id = tavParameterFactory::TypeNameToId(type);
  if (id == tavObject_ParameterAlert) return std::make_unique<SmokeDetector>();
  if (id == tavObject_ParameterShutter) return std::make_unique<Blind>();
  if (id == tavObject_ParameterThermoChronoWeek) return std::make_unique<Heating>();
  return std::unique_ptr<tavIParameter>(tavParameterFactory::CreateByType(id));
}

// The bytes of a value that is written as text.
std::vector<unsigned char> Bytes(const tavIParameter& parameter, const char* text) {
  std::vector<unsigned char> bytes;
  tavParameterFactory::StringToData(parameter.GetType(), text, &bytes);
  return bytes;
}

class House {
 public:
  House() {
    tavIParameter& lamp = Add(1, "ParameterSwitch", L"Lamp");
    tavIParameter& dimmer = Add(2, "ParameterSlider", L"Dimmer");
    tavIParameter& colour = Add(3, "ParameterColor", L"Colour");
    tavIParameter& blind = Add(4, "ParameterShutter", L"Blind");
    Add(5, "ParameterAlert", L"Smoke");
    Add(6, "ParameterThermoChronoWeek", L"Heating");
    tavParameterVRScene& evening = *Add(7, "ParameterVRScene", L"Evening").GetParameterVRScenePtr();

    lamp.SetDrivenTarget(&dimmer);  // the switch moves the slider
    for (const char* value : {"0", "1"}) {
      lamp.AddDrivenMapItem(tavCodeOperator_Equal, Bytes(lamp, value).data(), 1, Bytes(dimmer, value).data(),
                            4);
    }
    evening.BuildScene_Begin();
    evening.BuildScene_AddSetParameter(&colour, Bytes(colour, "0xFF8000").data(), 4);
    evening.BuildScene_AddWait(100);
    evening.BuildScene_AddSetParameter(&blind, Bytes(blind, "3").data(), 1);
    evening.BuildScene_End();
  }

  // What was added last goes first: the scene before the parameters that it sets.
  ~House() {
    while (!m_parameters.empty()) m_parameters.pop_back();
  }

  // An event is the parameter's id (4 bytes, the lowest first), the size of the value, and the value.
  void Apply(const unsigned char* event, int size) {
    if (size < 6 || size != 5 + event[4]) return;  // an empty value would leave the parameter locked
    unsigned int id = 0;
    for (int i = 4; i-- > 0;) id = id << 8 | event[i];
    for (const auto& parameter : m_parameters) {
      // Flag 0 keeps what the event does not carry: one byte switches the schedule and leaves its set-points.
      if (parameter->GetUniqueID() == id) return parameter->SetData(event + 5, event[4], 0);
    }
    std::printf("no parameter has the id %u\n", id);
  }

  // Takes over what has changed, whoever changed it. Making the switch clean moves the slider behind it.
  void TakeOver() {
    for (const auto& parameter : m_parameters) {
      if (!parameter->IsDirty()) continue;
      std::printf("%s = %.30s\n", parameter->ToString().c_str(), parameter->ValueToString().c_str());
      parameter->IsDirty(false);
    }
  }

  void Write(const char* path) const {
    dro::droOsFile file(path, "w");
    for (const auto& parameter : m_parameters) file.WriteText("%s\n", parameter->SerializeAsXml().c_str());
  }

 private:
  tavIParameter& Add(unsigned int id, const char* type, const wchar_t* name) {
    tavIParameter& parameter = *m_parameters.emplace_back(Make(type));
    parameter.SetUniqueID(id);
    parameter.SetName(name);
    return parameter;
  }

  std::vector<std::unique_ptr<tavIParameter>> m_parameters;
};

int main(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  // Ctrl-C is held back until the loop asks for it. First of all: threads inherit this.
  sigset_t interrupt;
  sigemptyset(&interrupt);
  sigaddset(&interrupt, SIGINT);
  pthread_sigmask(SIG_BLOCK, &interrupt, nullptr);

  const sockaddr_in address{AF_INET, htons(16549), {htonl(INADDR_LOOPBACK)}, {}};
  const int descriptor = ::socket(AF_INET, SOCK_DGRAM, 0);
  dro::droOsUdpSocket socket(dro::droOsSocketType_Udp, descriptor);
  if (bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
    std::perror("house: UDP port 16549");
    return 1;
  }
  House house;
  std::printf("the house is ready\n");
  for (const timespec noWait{}; sigtimedwait(&interrupt, nullptr, &noWait) < 0; house.TakeOver()) {
    unsigned char event[260];
    if (!socket.IsReadyToReceive(100)) continue;
    house.Apply(event, socket.Receive(event, sizeof(event), nullptr, nullptr));
  }
  house.Write(argc > 1 ? argv[1] : "house.xml");
}
