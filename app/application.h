#pragma once

#include <cstdint>

#include "tav_application.h"
#include "tav_error.h"

// The event dispatcher: one run sets one parameter of the server on this machine.
//
// Init reads the options, Execute sends the event as one datagram. Both report failures to the SDK's error
// log and return the logged code, which becomes the exit status. The object belongs to one thread.
class Application : public tavon::tavApplication {
 public:
  tavon::tavString GetName() const override;
  tavon::tavString GetVersion() const override;

  // Name, version, build date and origin of the program, a line each.
  tavon::tavString GetInfo() const override;

  // Reads the options. For -h, -version and -fversion it prints and ends the process with status 0. Code 6
  // when a required option is missing, code 1 when the year given with -y is not the current one.
  unsigned int Init(int argc, char** argv) override;

  // Converts the value and sends the event, see tavEvent.
  //
  // Code 6 for an empty value, code 1 when the type is unknown or the datagram was not sent whole. The server
  // does not answer an event, so it is no failure when nobody listens.
  unsigned int Execute() override;

  unsigned int Term() override { return tavon::tavError_NoError; }

 protected:
  // Accepted for compatibility, but without effect: an event carries no sender and always goes to the event
  // port of the loopback host.
  tavon::tavString User;
  tavon::tavString Password;
  tavon::tavString Address;
  std::int32_t Port = 0;

  tavon::tavString Type;
  std::uint32_t Id = 0;
  tavon::tavString Value;
};
