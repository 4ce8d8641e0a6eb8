#pragma once

#include <string>
#include <vector>

// Small functions on paths, files, folders, character sets and letter case.
//
// Nothing here keeps state or logs: the results tell, and the only exceptions are those of the standard and
// UTF-8 libraries. Any thread may call anything, with two things in common to the whole process: the current
// folder, and the locale, which must not be changed during a call that depends on it.
//
// Most functions exist for a plain character array and for a standard string. The second forwards to the
// first, so a string counts up to its first zero character. A null array counts as an empty text where
// nothing else is said. Buffers (char*, wchar_t*) are allocated with new[] and belong to the caller, who
// frees them with delete[].
class VUtility {
 public:
  // --- Character sets ---

  // Text in the character set of the current locale to wide text and back, as a buffer: null for null, an
  // empty text when any character cannot be converted.
  static wchar_t* StringToWideChar(const char* text);
  static wchar_t* StringToWideChar(const std::string& text) { return StringToWideChar(text.c_str()); }
  static char* WideCharToCString(const wchar_t* text);
  static char* WideCharToCString(const std::wstring& text) { return WideCharToCString(text.c_str()); }

  // The same as a standard string. A null text is an empty wide string one way and throws std::logic_error
  // the other way.
  static std::wstring StringToWideString(const char* text);
  static std::wstring StringToWideString(const std::string& text) { return StringToWideString(text.c_str()); }
  static std::string WideCharToString(const wchar_t* text);
  static std::string WideCharToString(const std::wstring& text) { return WideCharToString(text.c_str()); }

  // UTF-8 to wide text, one wide character a code point; null gives null, and an empty string. Bytes that are
  // not UTF-8 throw utf8::invalid_utf8 or utf8::invalid_code_point.
  static wchar_t* UTF8ToWideChar(const char* text);
  static wchar_t* UTF8ToWideChar(const std::string& text) { return UTF8ToWideChar(text.c_str()); }
  static std::wstring UTF8ToWideString(const char* text);
  static std::wstring UTF8ToWideString(const std::string& text) { return UTF8ToWideString(text.c_str()); }

  // Wide text to UTF-8; null gives null. A character that is no code point (a surrogate, one beyond 0x10FFFF)
  // throws utf8::invalid_code_point.
  static char* WideCharToUTF8(const wchar_t* text);
  static char* WideCharToUTF8(const std::wstring& text) { return WideCharToUTF8(text.c_str()); }

  // --- Paths ---

  // The text before the last delimiter; empty when there is none or the delimiter is empty.
  static std::string ExtractFilePath(const char* path, const char* delimiter);
  static std::string ExtractFilePath(const std::string& path, const std::string& delimiter) {
    return ExtractFilePath(path.c_str(), delimiter.c_str());
  }
  static std::string ExtractFilePath(const char* path) { return ExtractFilePath(path, "/"); }
  static std::string ExtractFilePath(const std::string& path) { return ExtractFilePath(path.c_str()); }

  // The text that begins one character after the start of the last delimiter; the whole path when there is
  // none, an empty text when the delimiter is empty. Of a delimiter of several characters all but the first
  // stay in the result: intended.
  static std::string ExtractFileName(const char* path, const char* delimiter);
  static std::string ExtractFileName(const std::string& path, const std::string& delimiter) {
    return ExtractFileName(path.c_str(), delimiter.c_str());
  }
  static std::string ExtractFileName(const char* path) { return ExtractFileName(path, "/"); }
  static std::string ExtractFileName(const std::string& path) { return ExtractFileName(path.c_str()); }

  // The text after the last "."; the whole path when there is none. A "." in a folder's name counts too.
  static std::string ExtractFileExt(const char* path) { return ExtractFileName(path, "."); }
  static std::string ExtractFileExt(const std::string& path) { return ExtractFileExt(path.c_str()); }

  // The path with a "/" at its end; an empty path stays empty.
  static std::string IncludePathDelimiter(const char* path);
  static std::string IncludePathDelimiter(const std::string& path) {
    return IncludePathDelimiter(path.c_str());
  }

  // Always empty on this platform.
  static std::string GetExeName() { return {}; }

  // Empty when the path has more than 255 bytes or cannot be told.
  static std::string GetCurrentDir();
  static bool SetCurrentDir(const char* path);
  static bool SetCurrentDir(const std::string& path) { return SetCurrentDir(path.c_str()); }

  // --- Files and folders: true on success ---

  // True when there is something at `path` that opens for reading, which a folder does too.
  static bool FileExists(const char* path);
  static bool FileExists(const std::string& path) { return FileExists(path.c_str()); }
  // True when it is a folder that can be listed.
  static bool DirectoryExists(const char* path);
  static bool DirectoryExists(const std::string& path) { return DirectoryExists(path.c_str()); }

  // Removes a file, a symbolic link (not what it points to) or an empty folder.
  static bool DelFile(const char* path);
  static bool DelFile(const std::string& path) { return DelFile(path.c_str()); }

  // Copies the contents of a file. With `overwrite` false an existing target is left alone and the result is
  // false. A copy that fails on the way leaves what was written so far. Copying a file onto itself loses it.
  static bool CpFile(const char* source, const char* target, bool overwrite);
  static bool CpFile(const std::string& source, const std::string& target, bool overwrite) {
    return CpFile(source.c_str(), target.c_str(), overwrite);
  }

  // Makes one folder for its user and group only (mode 0770). The flag is not used.
  static bool CreateDir(const char* path, bool);
  static bool CreateDir(const std::string& path, bool flag) { return CreateDir(path.c_str(), flag); }

  // Empties a folder with all that is below it, and removes it as well when `removeSelf` is set. Symbolic
  // links are removed, not followed. The first entry that cannot be removed ends the work with false.
  static bool RemoveDir(const char* path, bool removeSelf);
  static bool RemoveDir(const std::string& path, bool removeSelf) {
    return RemoveDir(path.c_str(), removeSelf);
  }

  // The entries of a folder, "." and ".." included, in the order of their names, each followed by "\n". A
  // null or empty path is the current folder; a folder that cannot be read gives an empty text.
  static std::string DirList(const char* path);
  static std::string DirList(const std::string& path) { return DirList(path.c_str()); }
  // The same with "<DIR>  " before each folder and "<FILE> " before anything else.
  static std::string DirListType(const char* path);
  static std::string DirListType(const std::string& path) { return DirListType(path.c_str()); }
  // The lines of DirListType, without their "\n".
  static std::vector<std::string> DirListTypeArray(const char* path);
  static std::vector<std::string> DirListTypeArray(const std::string& path) {
    return DirListTypeArray(path.c_str());
  }

  // Appends the text as it is to a file, which is made when it is not there. False for a null argument, and
  // when the file does not open. Whether the disk took the text is not told: logging goes on without it.
  static bool LogFile(const char* path, const char* text);
  static bool LogFile(const std::string& path, const std::string& text) {
    return LogFile(path.c_str(), text.c_str());
  }

  // --- What this platform does not have: the two do nothing ---

  static void MsgBox(const char* /*title*/, const char* /*text*/) {}
  static void MsgBox(const std::string& /*title*/, const std::string& /*text*/) {}
  static std::string CurrentTimeString() { return {}; }

  // --- Strings ---

  // Without leading and trailing space characters (" " only: tabs and line ends stay).
  static std::string TrimString(const char* text);
  static std::string TrimString(const std::string& text) { return TrimString(text.c_str()); }

  // Letter case by the rules of the current locale: arrays are changed in place, strings give a changed copy.
  static void ToLowerCase(char* io_text);
  static void ToLowerCase(wchar_t* io_text);
  static void ToUpperCase(char* io_text);
  static void ToUpperCase(wchar_t* io_text);
  static std::string ToLowerCase(const std::string& text);
  static std::wstring ToLowerCase(const std::wstring& text);
  static std::string ToUpperCase(const std::string& text);
  static std::wstring ToUpperCase(const std::wstring& text);
};
