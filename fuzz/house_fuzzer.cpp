#include "fuzz_input.h"
#include "tav_house.h"
#include "tav_parameterfactory.h"
#include "tav_parametershutter.h"
#include "tav_parametertype.h"
#include "temporary_folder.h"

// What reaches a house from outside: its state file, and datagrams.
//
// Input: the lines of a state file, which follow the one with its version. They are also taken as a datagram.

using tavon::tavEvent;
using tavon::tavHouse;
using tavon::tavIParameter;

// Nothing needs to be on the disk.
extern "C" int __wrap_fsync(int) { return 0; }

namespace {

// A house with a parameter of each type, with ids from 0, for all inputs.
tavHouse& MakeHouse() {
  auto& house = *new tavHouse;
  unsigned int id = 0;
  for (const tavon::tavParameterType* type : tavon::tavParameterFactory::GetTypes()) {
    std::unique_ptr<tavIParameter> parameter(tavon::tavParameterFactory::CreateByType(type->id));
    // Its thread would stop the shutter at a moment of its own.
    if (auto* const shutter = parameter->GetParameterShutterPtr()) shutter->term_thread();
    parameter->SetUniqueID(id++);
    house.Add(std::move(parameter));
  }
  house.TakeOver();
  return house;
}

const std::string& FileName() {
  static const TemporaryFolder folder;
  static const std::string name = folder.Path("house.state");
  return name;
}

std::string SavedText(const tavHouse& house) {
  RequireEqual(house.Save(FileName()), tavon::tavError_NoError, "saving");
  return ReadFile(FileName());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static tavHouse& house = MakeHouse();
  static tavHouse& restored = MakeHouse();
  tavon::tavError::Level = 0;

  // Any file leaves the parameters clean, with values that come back from a file of their own.
  WriteFile(FileName(), "ura-house 1\n" + std::string(reinterpret_cast<const char*>(data), size));
  const unsigned int status = house.Restore(FileName());
  Require(status == 0 || status == 6, "a file is restored, or has lines that do not fit");
  RequireEqual(house.TakeOver(), 0U, "what is dirty after it was restored");
  const std::string saved = SavedText(house);
  RequireEqual(restored.Restore(FileName()), tavon::tavError_NoError, "restoring what was saved");
  RequireEqual<std::string>(SavedText(restored), saved, "what is saved again");

  // An event changes one parameter at most, and leaves no lock behind.
  if (const auto event = tavEvent::FromDatagram(data, static_cast<int>(size))) {
    const bool isKnown = house.Find(event->GetId()) != nullptr;
    const bool isApplied = house.Apply(*event) == tavHouse::Result::Applied;
    RequireEqual(isApplied, isKnown && !event->GetValue().empty(), "whether an event is applied");
    Require(house.TakeOver() <= (isApplied ? 1U : 0U), "one parameter changes at most");
  }
  return 0;
}
