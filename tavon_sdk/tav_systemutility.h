#pragma once

#include "tav_string.h"

namespace tavon {

// Administers the machine with shell commands: storage, folders, processes, other hosts. All static.
//
// Texts become part of command lines as they are, without quotes, so pass only texts that you trust. Only the
// standard output of a command counts; its error messages go to the console and do not change the result.
// Only the first line of the output is read; then the pipe is closed, which ends a command that still prints.
//
// If a command cannot be run because there is no pipe, that is reported to tavErrorLog (code 4, source
// tav_systemutility), and the result is the one that is named last with each operation. Every operation waits
// for its command. Any thread may call it.
class tavSystemUtility {
 public:
  // Separates the folders of a path: "/".
  static const tavString Separator;

  // --- Storage and folders. The results are 1, 0 or -1. A command that is silent on success has succeeded
  // (1) if it printed nothing; a question is answered with yes (1) if something was printed. ---

  // Makes an ext3 file system with blocks of `blockSize` bytes.
  static int FormatExt3(const tavString& device, unsigned short blockSize);
  // Asks whether a device is mounted with a file system such as "ext3". The name of the device may be part of
  // a longer one, here and below.
  static int IsFormattedAs(const tavString& device, const tavString& type);
  static int IsDeviceMounted(const tavString& device);
  static int MountDevice(const tavString& device, const tavString& folder);
  static int UnMountDevice(const tavString& device);
  // Makes a folder and its parents. Succeeds if the folder exists already.
  static int CreateFolder(const tavString& path);
  // Makes `owner` (a user, or user:group) the owner of a folder and everything in it.
  static int SetFolderOwner(const tavString& folder, const tavString& owner);
  // Removes a file. The result is that of `system`: a wait status, or -1 if the command was not run.
  static int DeleteFileSystem(const tavString& path);

  // True if anything exists at `path`, even if it is not a folder.
  static bool FolderExist(const tavString& path);
  // The text before the last separator; empty if there is none.
  static tavString GetParentFolder(const tavString& path);
  // Resolves a path that begins with "./" or "../" against the current folder, one folder up for each "../".
  // Returns any other path as it is.
  static tavString GetModuleFileFullName(const tavString& path);

  // --- Other hosts ---

  // The number of answers to `count` pings; 0 without a pipe.
  static int Ping(tavString host, int count);
  // Removes the host from the address table, pings it once, and returns how many lines of the table then have
  // its hardware address: 1 even for a host that does not answer pings. 0 without a pipe.
  static int Arping(tavString host);
  // 1 if a ping is answered, otherwise the result of Arping.
  static int SuperPing(tavString host);

  // --- Processes ---

  // Runs "killall" with `second` before `first`, and ignores its output. Always 0.
  static int KillAll(const tavString& first, const tavString& second);
  // The first process id that is listed for a program; 0 if it is not running, -1 without a pipe.
  static int GetProcessID(const tavString& name);
  // Runs a command. The result is that of `system`, see DeleteFileSystem.
  static int Execute(const tavString& command);

  // Name and release of the system and type of the machine, such as "Linux 5.10.0 i686". Empty, after a
  // report with code 1, if the system does not provide them.
  static tavString GetDescription();
};

}  // namespace tavon
