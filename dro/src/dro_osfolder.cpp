// Listing a folder.

#include <cerrno>

#include "dro_osutility.h"

namespace dro {
namespace {

constexpr droReporter kReport{"dro_osutility"};

}  // namespace

droOsUtility::Folder::~Folder() {
  try {
    if (close() != droError_NoError) {
      kReport(droError_OperationFailed, "can not close directory ");
    }
  } catch (...) {
    // The log's level asks for exceptions, and none may leave a destructor.
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
  if (closedir(m_stream.release()) == 0) return droError_NoError;  // gives the stream up even when it fails
  const int error = errno;
  return kReport.System(droError_OperationFailed, "Can not close directory " + m_path, error);
}

droEError droOsUtility::Folder::GetFirstFile(FolderFile* o_file) {
  if (o_file == nullptr) {
    return kReport(droError_InvalidArgument, "io_pFolderFile == 0");
  }
  if (IsValid()) rewinddir(m_stream.get());
  return GetNextFile(o_file);
}

droEError droOsUtility::Folder::GetNextFile(FolderFile* o_file) {
  if (o_file == nullptr) {
    return kReport(droError_InvalidArgument, "io_pFolderFile == 0");
  }
  errno = IsValid() ? 0 : EBADF;
  *o_file = FolderFile(IsValid() ? readdir(m_stream.get()) : nullptr);
  const int error = errno;
  if (o_file->IsValid() || error == 0) return droError_NoError;
  return kReport.System(droError_OperationFailed, "Can not get next file", error);
}

droEError droOsUtility::GetFolder(const droString& path, Folder* o_folder) {
  if (o_folder == nullptr) return kReport(droError_InvalidArgument, "io_pFolder == 0");
  if (o_folder->open(path) == droError_NoError) return droError_NoError;
  return kReport(droError_OperationFailed, "Can not get folder " + path);
}

}  // namespace dro
