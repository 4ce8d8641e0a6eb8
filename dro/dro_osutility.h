#pragma once

#include <memory>
#include <utility>

#include "dro_error.h"
#include "dro_string.h"

namespace dro {

// Operations of the operating system: files and folders, shell commands, facts about the machine.
//
// Failures are reported to droErrorLog (source dro_osutility): code 2 when a system call fails, 5 when a
// command cannot be run, 7 for a null argument. Operations that return an error code return 0 or the code of
// their report. The static operations may be called from any thread.
//
// Texts become part of command lines as they are, without quotes: pass only what you trust. A null path is
// treated like one at which nothing exists.
class droOsUtility {
 public:
  // What separates the folders of a path: "/".
  static const droString Separator;

  // A copy of one entry of a folder, or no entry.
  class FolderFile {
   public:
    FolderFile() = default;
    // The entry of that name, which must not be empty.
    FolderFile(droString name, bool isDirectory) : m_name(std::move(name)), m_isDirectory(isDirectory) {}

    // True when there is an entry.
    bool IsValid() const { return !m_name.empty(); }
    // False for a symbolic link to a directory, and on file systems that do not report types.
    bool IsDirectory() const { return m_isDirectory; }
    // Empty when there is no entry.
    droString GetName() const { return m_name; }

   private:
    droString m_name;
    bool m_isDirectory = false;
  };

  // An open folder, which its destructor closes. Use it from one thread at a time.
  class Folder {
   public:
    Folder() = default;
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    // True when a folder is open.
    bool IsValid() const { return m_stream != nullptr; }

    // Closes the folder that is open and opens another one. When closing fails, no new one is opened.
    droEError open(const droString& path);
    // The folder is closed whatever the result. 0 also when nothing was open.
    droEError close();

    // Store the first or the next entry, in the order of the file system, "." and ".." included. At the end
    // the result is 0 and `o_file` invalid; on a failure, or when no folder is open, it is 2 and `o_file`
    // invalid.
    droEError GetFirstFile(FolderFile* o_file);
    droEError GetNextFile(FolderFile* o_file);

   private:
    struct Closer {
      void operator()(void* stream) const;
    };

    droString m_path;
    std::unique_ptr<void, Closer> m_stream;  // the system's DIR, whose header stays out of this one
  };

  // --- Files and folders ---

  // Removes a file.
  static droEError FileDelete(const char* path);

  // True when the file opens for reading; otherwise that is reported, as droOsFile::Open does.
  static bool FileExist(const char* path);
  // True when anything exists at `path`; it need not be a folder.
  static bool FolderExist(const char* path);

  // Runs "mv" and returns the result of Execute; -1 for a null path.
  static int FileMove(const char* from, const char* to);

  // The text after the last separator; the whole path when there is none.
  static droString GetFileNameWithExtension(const droString& path);
  // The text before the last separator; empty when there is none.
  static droString GetParentFolder(const droString& path);
  // Resolves a path that begins with "./" or "../" against the current folder, one folder up for each "../".
  // Returns any other path as it is.
  static droString GetModuleFullPath(const droString& path);

  // Opens a folder for listing.
  static droEError GetFolder(const droString& path, Folder* o_folder);

  // --- Shell commands ---

  // Runs a command and waits for it. The result is that of `system`: a wait status, or -1 when it was not
  // run.
  static int Execute(const droString& command);

  // Runs a command and appends everything that it prints on standard output to `io_output`. The exit status
  // of the command is ignored.
  static droEError ExecuteCommandLine(const droString& command, droString* io_output);

  // Writes `script` to the file "tavon.sh" in `folder`, runs it and appends its output as ExecuteCommandLine
  // does. The file stays until the next script overwrites it. Calls for the same folder must not overlap. A
  // script that cannot be written in full is not run.
  static droEError ExecuteScript(const droString& folder, const droString& script, droString* io_output);

  // --- The machine ---

  // The number that identifies the machine, as gethostid gives it.
  static long GetHostID();

  // The serial number of the processor; sixteen zeros when it has none.
  static droString GetCpuSerial();

  // The size in megabytes of the first mounted file system whose line in the output of df contains `device`;
  // 0 when there is none.
  static unsigned long GetSourceSize(const droString& device);

  // Appends the hardware address of each network interface, such as "02:00:5e:10:00:01", in the order in
  // which the system lists them. The loopback interface is left out. If there are too few descriptors to read
  // an address, the result is the code of that failure.
  static droEError GetMacAddress(droArray<droString>* io_macs);
};

}  // namespace dro
