#pragma once

#include "tav_string.h"

namespace tavon {

// What a program of the system is: its names, and its life from Init over Execute to Term.
class tavIApplication {
 public:
  virtual ~tavIApplication() = default;
  // The path of its file, its name, a banner that tells what it is, and its version.
  virtual tavString GetFullPath() const = 0;
  virtual tavString GetName() const = 0;
  virtual tavString GetInfo() const = 0;
  virtual tavString GetVersion() const = 0;

  // Each returns 0 on success, else an error code that becomes the exit status of the process.
  virtual unsigned int Init(int argc, char** argv) = 0;
  virtual unsigned int Execute() = 0;
  virtual unsigned int Term() = 0;
};

// Knows the path of its program file.
class tavApplication : public tavIApplication {
 public:
  // The path the program was started with, made absolute when it is relative to the current folder. Empty
  // before Init.
  tavString GetFullPath() const override { return FullPath; }

  // Stores the program's path. Returns 0.
  unsigned int Init(int argc, char** argv) override;

 protected:
  // See GetFullPath.
  tavString FullPath;
};

}  // namespace tavon
