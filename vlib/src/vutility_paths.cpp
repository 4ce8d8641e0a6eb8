// Paths.

#include <unistd.h>

#include <string_view>

#include "vutility.h"

namespace {

std::string_view View(const char* text) {
  return text == nullptr ? std::string_view() : std::string_view(text);
}

}  // namespace

std::string VUtility::ExtractFilePath(const char* path, const char* delimiter) {
  const std::string_view whole = View(path);
  const std::string_view sought = View(delimiter);
  const std::size_t found = sought.empty() ? std::string_view::npos : whole.rfind(sought);
  return found == std::string_view::npos ? std::string() : std::string(whole.substr(0, found));
}

std::string VUtility::ExtractFileName(const char* path, const char* delimiter) {
  const std::string_view whole = View(path);
  const std::string_view sought = View(delimiter);
  if (sought.empty()) return {};
  const std::size_t found = whole.rfind(sought);
  // One character is skipped, not the whole delimiter: callers rely on the rest of a longer one.
  return std::string(found == std::string_view::npos ? whole : whole.substr(found + 1));
}

std::string VUtility::IncludePathDelimiter(const char* path) {
  std::string result(View(path));
  if (!result.empty() && result.back() != '/') result += '/';
  return result;
}

std::string VUtility::GetCurrentDir() {
  char path[256];
  return getcwd(path, sizeof(path)) == nullptr ? std::string() : std::string(path);
}

bool VUtility::SetCurrentDir(const char* path) { return path != nullptr && chdir(path) == 0; }
