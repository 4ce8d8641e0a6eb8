#include "tav_systemutility.h"

#include <sys/stat.h>
#include <sys/utsname.h>

#include <cstdlib>
#include <optional>

#include "shared/vcommand.h"
#include "shared/vpath.h"
#include "tav_error.h"
#include "vutility.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_systemutility"};

constexpr int kNoPipe = -1;

// False, after a report in the caller's name, when a command could not be run.
bool HasPipe(const vlib::CommandOutput& output, vlib::Place place = {}) {
  if (output.IsOpen()) return true;
  kReport(tavError_InvalidPointer, "Can not open system pipe", place);
  return false;
}

// The first line that a command prints, empty when it prints nothing; no text at all without a pipe.
std::optional<tavString> FirstLine(const tavString& command, vlib::Place place = {}) {
  vlib::CommandOutput output(command);
  if (!HasPipe(output, place)) return std::nullopt;
  std::string text;
  output.ReadLine(text);
  return text;
}

// For commands that print nothing when all goes well: 1 if they succeeded, 0 if they did not.
int Success(const std::optional<tavString>& output) {
  if (!output) return kNoPipe;
  return output->empty() ? 1 : 0;
}

// For commands that print what they find: 1 if they found something, 0 if not.
int Answer(const std::optional<tavString>& output) {
  if (!output) return kNoPipe;
  return output->empty() ? 0 : 1;
}

// For commands that print a number.
int NumberFrom(const std::optional<tavString>& output, int withoutPipe) {
  return output ? tavString::AsInt(*output, 10) : withoutPipe;
}

}  // namespace

const tavString tavSystemUtility::Separator = "/";

int tavSystemUtility::FormatExt3(const tavString& device, unsigned short blockSize) {
  return Success(FirstLine("mkfs.ext3 " + device + " -b " + std::to_string(blockSize) + " -q"));
}

int tavSystemUtility::IsFormattedAs(const tavString& device, const tavString& type) {
  return Answer(FirstLine("mount | grep " + device + " | grep " + type));
}

int tavSystemUtility::IsDeviceMounted(const tavString& device) {
  return Answer(FirstLine("mount | grep " + device));
}

int tavSystemUtility::MountDevice(const tavString& device, const tavString& folder) {
  return Success(FirstLine("mount " + device + " " + folder));
}

int tavSystemUtility::UnMountDevice(const tavString& device) {
  return Success(FirstLine("umount " + device));
}

int tavSystemUtility::CreateFolder(const tavString& path) { return Success(FirstLine("mkdir -p " + path)); }

int tavSystemUtility::SetFolderOwner(const tavString& folder, const tavString& owner) {
  // The second argument comes first, because chown wants the owner before the folder.
  return Success(FirstLine("chown " + owner + " -R " + folder));
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
  if (!HasPipe(output)) return 0;
  int answers = 0;
  bool isNewLine = true;  // a long line comes in pieces, but is one answer
  std::string piece;
  while (output.ReadLine(piece)) {
    if (isNewLine) ++answers;
    isNewLine = piece.back() == '\n';
  }
  return answers;
}

int tavSystemUtility::Arping(tavString host) {
  return NumberFrom(FirstLine("arp -d " + host + " > /dev/null; ping " + host +
                              " -c 1 > /dev/null; arp | grep " + host + " | grep ether | wc -l"),
                    0);
}

int tavSystemUtility::SuperPing(tavString host) { return Ping(host, 1) > 0 ? 1 : Arping(host); }
// NOLINTEND(performance-unnecessary-value-param)

int tavSystemUtility::KillAll(const tavString& first, const tavString& second) {
  // The second argument comes first, because it is the signal or another option of killall.
  const vlib::CommandOutput output("killall " + second + " " + first);
  HasPipe(output);
  return 0;
}

int tavSystemUtility::GetProcessID(const tavString& name) {
  return NumberFrom(FirstLine("pidof " + name), kNoPipe);
}

int tavSystemUtility::Execute(const tavString& command) { return std::system(command.c_str()); }

tavString tavSystemUtility::GetDescription() {
  utsname names;
  if (uname(&names) != 0) {
    kReport(tavError_OperationFailed, "uname returned null structure.");
    return {};
  }
  return tavString(names.sysname) + " " + names.release + " " + names.machine;
}

}  // namespace tavon
