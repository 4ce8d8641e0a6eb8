#include "tav_systemutility.h"

#include <sys/stat.h>
#include <sys/utsname.h>

#include <cstdlib>
#include <optional>

#include "tav_error.h"
#include "vcommand.h"
#include "vpath.h"
#include "vutility.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_systemutility"};

constexpr int kNoPipe = -1;

// False, after a report in the name of `function`, when a command could not be run.
bool HasPipe(const vlib::CommandOutput& output, const char* function) {
  if (output.IsOpen()) return true;
  kReport(tavError_InvalidPointer, "Can not open system pipe", function, 31);
  return false;
}

// The first line that a command prints, empty when it prints nothing; no text at all without a pipe.
std::optional<tavString> FirstLine(const tavString& command, const char* function) {
  vlib::CommandOutput output(command);
  if (!HasPipe(output, function)) return std::nullopt;
  std::string line;
  output.ReadLine(line);
  return line;
}

// For commands that have nothing to say when all goes well: 1 when nothing was printed.
int IsSilent(const tavString& command, const char* function) {
  const std::optional<tavString> line = FirstLine(command, function);
  return line ? line->empty() : kNoPipe;
}

// For commands that print what they find: 1 when something was printed.
int IsFound(const tavString& command, const char* function) {
  const std::optional<tavString> line = FirstLine(command, function);
  return line ? !line->empty() : kNoPipe;
}

// For commands that print a number.
int NumberFrom(const tavString& command, int withoutPipe, const char* function) {
  const std::optional<tavString> line = FirstLine(command, function);
  return line ? tavString::AsInt(*line, 10) : withoutPipe;
}

}  // namespace

const tavString tavSystemUtility::Separator = "/";

int tavSystemUtility::FormatExt3(const tavString& device, unsigned short blockSize) {
  return IsSilent("mkfs.ext3 " + device + " -b " + std::to_string(blockSize) + " -q", "FormatExt3");
}

int tavSystemUtility::IsFormattedAs(const tavString& device, const tavString& type) {
  return IsFound("mount | grep " + device + " | grep " + type, "IsFormattedAs");
}

int tavSystemUtility::IsDeviceMounted(const tavString& device) {
  return IsFound("mount | grep " + device, "IsDeviceMounted");
}

int tavSystemUtility::MountDevice(const tavString& device, const tavString& folder) {
  return IsSilent("mount " + device + " " + folder, "MountDevice");
}

int tavSystemUtility::UnMountDevice(const tavString& device) {
  return IsSilent("umount " + device, "UnMountDevice");
}

int tavSystemUtility::CreateFolder(const tavString& path) {
  return IsSilent("mkdir -p " + path, "CreateFolder");
}

int tavSystemUtility::SetFolderOwner(const tavString& folder, const tavString& owner) {
  // The second argument comes first, as it is meant to: chown wants the owner before the folder.
  return IsSilent("chown " + owner + " -R " + folder, "SetFolderOwner");
}

int tavSystemUtility::DeleteFileSystem(const tavString& path) { return Execute("rm " + path); }

bool tavSystemUtility::FolderExist(const tavString& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0;
}

tavString tavSystemUtility::GetParentFolder(const tavString& path) { return VUtility::ExtractFilePath(path); }

tavString tavSystemUtility::GetModuleFileFullName(const tavString& path) { return vlib::AbsolutePath(path); }

// NOLINTBEGIN(performance-unnecessary-value-param): the interface takes the host by value
int tavSystemUtility::Ping(tavString host, int count) {
  vlib::CommandOutput output("ping " + host + " -c " + std::to_string(count) + " | grep ttl");
  if (!HasPipe(output, "Ping")) return 0;
  int answers = 0;
  bool isNewLine = true;  // a long line comes in pieces and is one answer all the same
  for (std::string piece; output.ReadLine(piece); isNewLine = piece.back() == '\n')
    answers += isNewLine ? 1 : 0;
  return answers;
}

int tavSystemUtility::Arping(tavString host) {
  return NumberFrom("arp -d " + host + " > /dev/null; ping " + host + " -c 1 > /dev/null; arp | grep " +
                        host + " | grep ether | wc -l",
                    0, "Arping");
}

int tavSystemUtility::SuperPing(tavString host) { return Ping(host, 1) > 0 ? 1 : Arping(host); }
// NOLINTEND(performance-unnecessary-value-param)

int tavSystemUtility::KillAll(const tavString& first, const tavString& second) {
  // The second argument comes first, as it is meant to: it is the signal or another option of killall.
  const vlib::CommandOutput output("killall " + second + " " + first);
  HasPipe(output, "KillAll");
  return 0;
}

int tavSystemUtility::GetProcessID(const tavString& name) {
  return NumberFrom("pidof " + name, kNoPipe, "GetProcessID");
}

int tavSystemUtility::Execute(const tavString& command) { return std::system(command.c_str()); }

tavString tavSystemUtility::GetDescription() {
  utsname names;
  if (uname(&names) != 0) {
    kReport(tavError_OperationFailed, "uname returned null structure.", "GetDescription", 199);
    return {};
  }
  return tavString(names.sysname) + " " + names.release + " " + names.machine;
}

}  // namespace tavon
