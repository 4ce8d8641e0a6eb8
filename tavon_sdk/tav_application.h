#pragma once

#include "tav_string.h"

namespace tavon {

// A program of the system: its names, and its life from Init through Execute to Term.
class tavIApplication {
 public:
  virtual ~tavIApplication() = default;
  // The path of its file, its name, a banner that says what it is, and its version.
  virtual tavString GetFullPath() const = 0;
  virtual tavString GetName() const = 0;
  virtual tavString GetInfo() const = 0;
  virtual tavString GetVersion() const = 0;

  // Each returns 0 on success, otherwise an error code, which becomes the exit status of the process.
  virtual unsigned int Init(int argc, char** argv) = 0;
  virtual unsigned int Execute() = 0;
  virtual unsigned int Term() = 0;
};

// An application that knows the path of its program file.
class tavApplication : public tavIApplication {
 public:
  // The path with which the program was started, made absolute. Empty before Init.
  tavString GetFullPath() const override { return FullPath; }

  // Stores the path of the program. Returns 0.
  unsigned int Init(int argc, char** argv) override;

 protected:
  // See GetFullPath.
  tavString FullPath;
};

}  // namespace tavon
