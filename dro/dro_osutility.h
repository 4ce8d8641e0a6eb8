#pragma once

#include <dirent.h>

#include "dro_error.h"
#include "dro_string.h"
#include "vfile.h"

namespace dro {

// Questions to the operating system and small jobs for it: files and folders, shell commands, the machine.
//
// Failures are reported to droErrorLog (source dro_osutility): code 2 when a call of the system fails, 5 when
// a command can not be run, 7 for a null argument. Operations with an error code as result give 0 or the code
// of their report. Everything static may be called from any thread.
//
// Texts become part of command lines as they are, without quotes: callers pass what they trust. A null
// path is one at which there is nothing.
class droOsUtility {
 public:
  // Between the folders of a path: "/".
  static const droString Separator;

  // One entry of a folder, or none. Valid until the folder gives the next one or is closed.
  class FolderFile {
   public:
    FolderFile() = default;
    explicit FolderFile(const dirent* entry) : m_entry(entry) {}

    bool IsValid() const { return m_entry != nullptr; }
    // True when the folder itself says so, which a symbolic link to a directory does not.
    bool IsDirectory() const { return IsValid() && m_entry->d_type == DT_DIR; }
    // Empty when there is none.
    droString GetName() const { return IsValid() ? m_entry->d_name : ""; }

   private:
    const dirent* m_entry = nullptr;  // the folder's
  };

  // An open folder, which its destructor closes. One thread at a time uses it.
  class Folder {
   public:
    Folder() = default;
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    bool IsValid() const { return m_stream != nullptr; }

    // Closes what is open and opens a folder. When closing fails no new one is opened.
    droEError open(const droString& path);
    // Whatever the result, the folder is closed. 0 also when nothing was open.
    droEError close();

    // Give the first and the next entry, in the order of the file system and with "." and ".." among them.
    // 0 with an invalid `o_file` at the end; 2 with an invalid `o_file` on a failure and when not open.
    droEError GetFirstFile(FolderFile* o_file);
    droEError GetNextFile(FolderFile* o_file);

   private:
    droString m_path;
    vlib::Folder m_stream;
  };

  // --- Files and folders ---

  static droEError FileDelete(const char* path);

  // True when the file opens for reading. One that does not is reported as by droOsFile::Open.
  static bool FileExist(const char* path);
  // True when there is anything at `path`; it need not be a folder.
  static bool FolderExist(const char* path);

  // Runs "mv", with the result of Execute; -1 for a null path.
  static int FileMove(const char* from, const char* to);

  // The text after the last separator, the whole path when there is none.
  static droString GetFileNameWithExtension(const droString& path);
  // The text before the last separator, empty when there is none.
  static droString GetParentFolder(const droString& path);
  // Makes a path absolute that begins with "./" or "../", see vlib::AbsolutePath.
  static droString GetModuleFullPath(const droString& path);

  // Opens a folder for listing.
  static droEError GetFolder(const droString& path, Folder* o_folder);

  // --- Shell commands ---

  // Runs a command and waits for it. The result is that of `system`: a wait status, -1 when it was not run.
  static int Execute(const droString& command);

  // Runs a command and appends what it prints on its standard output, whole, to `io_output`. How the command
  // ends does not matter.
  static droEError ExecuteCommandLine(const droString& command, droString* io_output);

  // Writes `script` to the file "tavon.sh" in `folder`, runs it and appends what it prints, as
  // ExecuteCommandLine does. The file stays, and the next script takes its place. Calls for the same folder
  // must not overlap. A script that can not be written whole is not run.
  static droEError ExecuteScript(const droString& folder, const droString& script, droString* io_output);

  // --- The machine ---

  // The number that identifies the machine, as gethostid gives it.
  static long GetHostID();

  // Sixteen zeros when the processor tells none.
  static droString GetCpuSerial();

  // The size, in megabytes, of the first mounted file system whose line in the output of df contains
  // `device`; 0 when there is none.
  static unsigned long GetSourceSize(const droString& device);

  // Appends the hardware address of each network interface, such as "02:00:5e:10:00:01", in the order in
  // which the system lists them. That of the loopback interface is left out.
  static droEError GetMacAddress(droArray<droString>* io_macs);
};

}  // namespace dro
