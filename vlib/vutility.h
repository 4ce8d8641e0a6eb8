#pragma once

#include <string>
#include <vector>

// Small functions on paths, files, folders, character sets and letter case.
//
// Errors are reported by return value only; the only exceptions are those of the standard and UTF-8
// libraries. There is no state, so any thread may call anything. The current folder and the locale belong to
// the whole process: do not change the locale during a call that depends on it.
//
// Most functions exist for a plain character array and for a standard string. The second calls the first, so
// that a string counts up to its first zero character. A null array counts as an empty text unless a comment
// says otherwise. Buffers (char*, wchar_t*) are allocated with new[] and belong to the caller, who frees them
// with delete[].
class VUtility {
 public:
  // --- Character sets ---

  // Text in the character set of the current locale to wide text and back, as a buffer. Null gives null; a
  // character that cannot be converted makes the whole result empty.
  static wchar_t* StringToWideChar(const char* text);
  static wchar_t* StringToWideChar(const std::string& text) { return StringToWideChar(text.c_str()); }
  static char* WideCharToCString(const wchar_t* text);
  static char* WideCharToCString(const std::wstring& text) { return WideCharToCString(text.c_str()); }

  // The same as a standard string. A null text gives an empty wide string, but throws std::logic_error on the
  // way back.
  static std::wstring StringToWideString(const char* text);
  static std::wstring StringToWideString(const std::string& text) { return StringToWideString(text.c_str()); }
  static std::string WideCharToString(const wchar_t* text);
  static std::string WideCharToString(const std::wstring& text) { return WideCharToString(text.c_str()); }

  // UTF-8 to wide text, one wide character per code point. Null gives a null buffer or an empty string. Bytes
  // that are not UTF-8 throw utf8::invalid_utf8 or utf8::invalid_code_point.
  static wchar_t* UTF8ToWideChar(const char* text);
  static wchar_t* UTF8ToWideChar(const std::string& text) { return UTF8ToWideChar(text.c_str()); }
  static std::wstring UTF8ToWideString(const char* text);
  static std::wstring UTF8ToWideString(const std::string& text) { return UTF8ToWideString(text.c_str()); }

  // Wide text to UTF-8. Null gives null. A surrogate, or a character beyond U+10FFFF, throws
  // utf8::invalid_code_point.
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
  // none, an empty text when the delimiter is empty. The rest of a longer delimiter stays in the result,
  // which is kept for compatibility.
  static std::string ExtractFileName(const char* path, const char* delimiter);
  static std::string ExtractFileName(const std::string& path, const std::string& delimiter) {
    return ExtractFileName(path.c_str(), delimiter.c_str());
  }
  static std::string ExtractFileName(const char* path) { return ExtractFileName(path, "/"); }
  static std::string ExtractFileName(const std::string& path) { return ExtractFileName(path.c_str()); }

  // The text after the last "."; the whole path when there is none. A "." in the name of a folder counts,
  // too.
  static std::string ExtractFileExt(const char* path) { return ExtractFileName(path, "."); }
  static std::string ExtractFileExt(const std::string& path) { return ExtractFileExt(path.c_str()); }

  // The path with a "/" at its end; an empty path stays empty.
  static std::string IncludePathDelimiter(const char* path);
  static std::string IncludePathDelimiter(const std::string& path) {
    return IncludePathDelimiter(path.c_str());
  }

  // Always empty on this platform.
  static std::string GetExeName() { return {}; }

  // Empty when the path is unknown or has more than 255 bytes.
  static std::string GetCurrentDir();
  static bool SetCurrentDir(const char* path);
  static bool SetCurrentDir(const std::string& path) { return SetCurrentDir(path.c_str()); }

  // --- Files and folders: true on success ---

  // True when `path` opens for reading, as a folder does, too.
  static bool FileExists(const char* path);
  static bool FileExists(const std::string& path) { return FileExists(path.c_str()); }
  // True when `path` is a folder that can be listed.
  static bool DirectoryExists(const char* path);
  static bool DirectoryExists(const std::string& path) { return DirectoryExists(path.c_str()); }

  // Removes a file, a symbolic link (not what it points to) or an empty folder.
  static bool DelFile(const char* path);
  static bool DelFile(const std::string& path) { return DelFile(path.c_str()); }

  // Copies the contents of a file. With `overwrite` false, an existing target is left alone and the result is
  // false. A copy that fails halfway leaves what was written so far. Copying a file onto itself empties it.
  static bool CpFile(const char* source, const char* target, bool overwrite);
  static bool CpFile(const std::string& source, const std::string& target, bool overwrite) {
    return CpFile(source.c_str(), target.c_str(), overwrite);
  }

  // Makes one folder, accessible to its user and group only (mode 0770). The flag is not used.
  static bool CreateDir(const char* path, bool);
  static bool CreateDir(const std::string& path, bool flag) { return CreateDir(path.c_str(), flag); }

  // Removes everything in a folder and below it, and with `removeSelf` the folder, too. Symbolic links are
  // removed, not followed. Stops with false at the first entry that cannot be removed.
  static bool RemoveDir(const char* path, bool removeSelf);
  static bool RemoveDir(const std::string& path, bool removeSelf) {
    return RemoveDir(path.c_str(), removeSelf);
  }

  // The entries of a folder, "." and ".." included, sorted by name, each followed by "\n". A null or empty
  // path is the current folder; a folder that cannot be read gives an empty text.
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

  // Appends the text as it is to a file, which is created if need be. False for a null argument and when the
  // file does not open. A full disk is not reported: a program must not fail because its log does.
  static bool LogFile(const char* path, const char* text);
  static bool LogFile(const std::string& path, const std::string& text) {
    return LogFile(path.c_str(), text.c_str());
  }

  // --- Not available on this platform: a call does nothing ---

  // Does nothing.
  static void MsgBox(const char* /*title*/, const char* /*text*/) {}
  static void MsgBox(const std::string& /*title*/, const std::string& /*text*/) {}
  // Always empty.
  static std::string CurrentTimeString() { return {}; }

  // --- Strings ---

  // Without leading and trailing space characters (" " only: tabs and line ends stay).
  static std::string TrimString(const char* text);
  static std::string TrimString(const std::string& text) { return TrimString(text.c_str()); }

  // Change letter case by the rules of the current locale: arrays in place, strings in a copy that is
  // returned.
  static void ToLowerCase(char* io_text);
  static void ToLowerCase(wchar_t* io_text);
  static void ToUpperCase(char* io_text);
  static void ToUpperCase(wchar_t* io_text);
  static std::string ToLowerCase(const std::string& text);
  static std::wstring ToLowerCase(const std::wstring& text);
  static std::string ToUpperCase(const std::string& text);
  static std::wstring ToUpperCase(const std::wstring& text);
};
