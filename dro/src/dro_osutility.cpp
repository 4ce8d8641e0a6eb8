#include "dro_osutility.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <utility>

#include "dro_osfile.h"
#include "shared/vcommand.h"
#include "shared/vfile.h"
#include "shared/vpath.h"
#include "vutility.h"

namespace dro {
namespace {

constexpr droReporter kReport{"dro_osutility"};

droEError ReportNoPipe(vlib::Place place = {}) {
  return kReport(droError_InvalidPointer, "Can not open system pipe", place);
}

// Appends everything that a command prints.
droEError AppendOutput(const droString& command, droString& io_output, vlib::Place place = {}) {
  vlib::CommandOutput output(command);
  if (!output.IsOpen()) return ReportNoPipe(place);
  for (std::string printed; output.ReadLine(printed);) io_output.append(printed);
  return droError_NoError;
}

// Whether there is no such file. One that cannot be opened, for example for want of descriptors, is not
// missing.
bool IsMissing(const droString& path) {
  return vlib::OpenFile(path.c_str(), "rb") == nullptr && (errno == ENOENT || errno == ENOTDIR);
}

}  // namespace

const droString droOsUtility::Separator = "/";

void droOsUtility::Folder::Closer::operator()(void* stream) const { closedir(static_cast<DIR*>(stream)); }

droOsUtility::Folder::~Folder() {
  try {
    if (close() != droError_NoError) kReport(droError_OperationFailed, "can not close directory ");
  } catch (...) {
    // The log's level asks for exceptions, but none may leave a destructor.
  }
}

droEError droOsUtility::Folder::open(const droString& path) {
  if (close() != droError_NoError) return kReport(droError_OperationFailed, "can not close directory ");
  m_path = path;
  m_stream.reset(opendir(path.c_str()));
  if (IsValid()) return droError_NoError;
  const int error = errno;
  return kReport.System(droError_OperationFailed, "Can not open directory " + path, error);
}

droEError droOsUtility::Folder::close() {
  if (!IsValid()) return droError_NoError;
  // The system gives the stream up even when closing fails.
  if (closedir(static_cast<DIR*>(m_stream.release())) == 0) return droError_NoError;
  const int error = errno;
  return kReport.System(droError_OperationFailed, "Can not close directory " + m_path, error);
}

droEError droOsUtility::Folder::GetFirstFile(FolderFile* o_file) {
  if (o_file == nullptr) return kReport(droError_InvalidArgument, "io_pFolderFile == 0");
  if (IsValid()) rewinddir(static_cast<DIR*>(m_stream.get()));
  return GetNextFile(o_file);
}

droEError droOsUtility::Folder::GetNextFile(FolderFile* o_file) {
  if (o_file == nullptr) return kReport(droError_InvalidArgument, "io_pFolderFile == 0");
  errno = IsValid() ? 0 : EBADF;
  const dirent* const entry = IsValid() ? readdir(static_cast<DIR*>(m_stream.get())) : nullptr;
  const int error = errno;
  *o_file = entry != nullptr ? FolderFile(entry->d_name, entry->d_type == DT_DIR) : FolderFile();
  if (entry != nullptr || error == 0) return droError_NoError;
  return kReport.System(droError_OperationFailed, "Can not get next file", error);
}

droEError droOsUtility::FileDelete(const char* path) {
  if (path != nullptr && unlink(path) == 0) return droError_NoError;
  return kReport(droError_OperationFailed, "Can not delete file");
}

// Defined here so that a program that only reports links no other operation of this file.
droEError droError::DeleteLog() { return droOsUtility::FileDelete(LogFile.c_str()); }

bool droOsUtility::FileExist(const char* path) { return path != nullptr && droOsFile(path, "rb").IsValid(); }

bool droOsUtility::FolderExist(const char* path) {
  struct stat status;
  return path != nullptr && stat(path, &status) == 0;
}

int droOsUtility::FileMove(const char* from, const char* to) {
  if (from == nullptr || to == nullptr) return -1;
  return Execute(droString("mv ") + from + " " + to);
}

droString droOsUtility::GetFileNameWithExtension(const droString& path) {
  return VUtility::ExtractFileName(path);
}

droString droOsUtility::GetParentFolder(const droString& path) { return VUtility::ExtractFilePath(path); }

droString droOsUtility::GetModuleFullPath(const droString& path) { return vlib::AbsolutePath(path); }

droEError droOsUtility::GetFolder(const droString& path, Folder* o_folder) {
  if (o_folder == nullptr) return kReport(droError_InvalidArgument, "io_pFolder == 0");
  if (o_folder->open(path) == droError_NoError) return droError_NoError;
  return kReport(droError_OperationFailed, "Can not get folder " + path);
}

int droOsUtility::Execute(const droString& command) { return std::system(command.c_str()); }

droEError droOsUtility::ExecuteCommandLine(const droString& command, droString* io_output) {
  if (io_output == nullptr) return kReport(droError_InvalidArgument, "o_pData == 0");
  return AppendOutput(command, *io_output);
}

droEError droOsUtility::ExecuteScript(const droString& folder, const droString& script,
                                      droString* io_output) {
  if (io_output == nullptr) return kReport(droError_InvalidArgument, "o_pData == 0");
  const droString path = folder + Separator + "tavon.sh";

  // A program that another thread starts must not inherit the open script ("e"): a file that is open for
  // writing does not run.
  droOsFile file(path, "we");
  if (!file.IsValid()) return kReport(droError_OperationFailed, "Can not write tmp file " + path);
  if (std::cmp_not_equal(file.WriteText("%s", script.c_str()), script.size())) {
    return kReport(droError_OperationFailed, "Can not write all data " + script);
  }
  // A full disk may show only now, and half a script must not run.
  const droEError closed = file.Close();
  if (closed != droError_NoError) return closed;
  if (chmod(path.c_str(), 0755) != 0) {
    const int error = errno;
    return kReport.System(droError_OperationFailed, "Can not set chmod " + path, error);
  }
  return AppendOutput(path, *io_output);
}

long droOsUtility::GetHostID() { return gethostid(); }

droString droOsUtility::GetCpuSerial() {
  droString output;  // stays empty without a pipe, and then holds no serial number
  droString serial;
  AppendOutput("cat /proc/cpuinfo | grep Serial", output);
  return output.Extract(&serial, ": ", "\n", true, 0) == -1 ? "0000000000000000" : serial;
}

unsigned long droOsUtility::GetSourceSize(const droString& device) {
  vlib::CommandOutput output("df -B M | grep " + device + " | awk '{print $2}'");
  if (!output.IsOpen()) {
    ReportNoPipe();
    return 0;
  }
  std::string line;
  output.ReadLine(line);
  droString size = line;
  size.FindAndReplace("M", "", true, false, 0);
  return droString::AsULong(size, 10);
}

droEError droOsUtility::GetMacAddress(droArray<droString>* io_macs) {
  if (io_macs == nullptr) return kReport(droError_InvalidArgument, "o_aMacs == 0");
  const droString path = "/sys/class/net/";
  Folder folder;
  if (GetFolder(path, &folder) != droError_NoError) {
    return kReport(droError_OperationFailed, "Can not get folder");
  }

  FolderFile interface;
  droEError result = folder.GetFirstFile(&interface);
  for (; interface.IsValid(); result = folder.GetNextFile(&interface)) {
    const droString name = interface.GetName();
    if (name == "." || name == "..") continue;
    // Not every entry is an interface, and one can disappear at any time, so this is not reported.
    const droString addressPath = path + name + Separator + "address";
    if (IsMissing(addressPath)) continue;
    droOsFile file;
    const droEError opened = file.Open(addressPath, "rb");
    if (opened != droError_NoError) return opened;
    droString address;
    const bool hasLine = file.ReadNextLine(&address);
    if (!hasLine && address.empty()) continue;
    if (address != "00:00:00:00:00:00") io_macs->push_back(address);
  }
  return result;
}

}  // namespace dro
