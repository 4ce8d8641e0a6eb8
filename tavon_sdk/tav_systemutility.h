#pragma once

#include "tav_string.h"

namespace tavon {

// Administration of the machine by shell commands: storage, folders, processes, other hosts. All static.
//
// Texts become part of command lines as they are, without quotes: callers pass what they trust. Only what a
// command prints on its standard output counts; its error messages go to the console and change no result. Of
// the output the first line is read, then the pipe is closed: a command that still prints is ended.
//
// A command that can not be run for want of a pipe is reported to tavErrorLog (code 4, source
// tav_systemutility), and the result is the one named last with each operation. Every operation waits for its
// command, and may be called from any thread.
class tavSystemUtility {
 public:
  // Between the folders of a path: "/".
  static const tavString Separator;

  // --- Storage and folders. 1, 0 or -1: commands that are silent on success have succeeded when they printed
  // nothing, questions are answered with yes when something was printed. ---

  // Makes an ext3 file system with blocks of `blockSize` bytes.
  static int FormatExt3(const tavString& device, unsigned short blockSize);
  // Whether a device is mounted as that type of file system, such as "ext3". The device's name may be part of
  // a longer one here and below.
  static int IsFormattedAs(const tavString& device, const tavString& type);
  static int IsDeviceMounted(const tavString& device);
  static int MountDevice(const tavString& device, const tavString& folder);
  static int UnMountDevice(const tavString& device);
  // Makes a folder and those above it; one that is there already is a success.
  static int CreateFolder(const tavString& path);
  // Makes `owner` (a user, or user:group) the owner of a folder and of all below it.
  static int SetFolderOwner(const tavString& folder, const tavString& owner);
  // Removes a file. The result is that of `system`: a wait status, -1 when the command was not run.
  static int DeleteFileSystem(const tavString& path);

  // True when there is anything at `path`; it need not be a folder.
  static bool FolderExist(const tavString& path);
  // The text before the last separator, empty when there is none.
  static tavString GetParentFolder(const tavString& path);
  // Makes a path absolute that begins with "./" or "../", see vlib::AbsolutePath.
  static tavString GetModuleFileFullName(const tavString& path);

  // --- Other hosts ---

  // The number of answers to `count` pings; 0 without a pipe.
  static int Ping(tavString host, int count);
  // In how many lines the host's hardware address stands in the address table after it was removed from there
  // and pinged once: 1 also for a host that does not answer pings. 0 without a pipe.
  static int Arping(tavString host);
  // 1 when a ping is answered, else what Arping says.
  static int SuperPing(tavString host);

  // --- Processes ---

  // Runs "killall" with `second` before `first`, and does not read what it prints. Always 0.
  static int KillAll(const tavString& first, const tavString& second);
  // The first id that is listed for a program; 0 when it does not run, -1 without a pipe.
  static int GetProcessID(const tavString& name);
  // Runs a command. The result is that of `system`, see DeleteFileSystem.
  static int Execute(const tavString& command);

  // Name and release of the system and type of the machine, such as "Linux 5.10.0 i686". Empty, after a
  // report with code 1, when the system does not tell.
  static tavString GetDescription();
};

}  // namespace tavon
