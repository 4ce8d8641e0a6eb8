// Files and folders.

#include <dirent.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "shared/vfile.h"
#include "vutility.h"

namespace {

constexpr off_t kCopyBlock = 98304;

// Where the file system does not report the type of its entries, all count as files.
bool IsFolder(const dirent& entry) { return entry.d_type == DT_DIR; }

// The entries of a folder, sorted by name, which it owns. None when the folder cannot be read.
class SortedEntries {
 public:
  explicit SortedEntries(const char* path) : m_count(scandir(path, &m_entries, nullptr, alphasort)) {}
  ~SortedEntries() {
    for (dirent* entry : *this) std::free(entry);
    std::free(m_entries);
  }
  SortedEntries(const SortedEntries&) = delete;
  SortedEntries& operator=(const SortedEntries&) = delete;

  dirent** begin() const { return m_entries; }
  dirent** end() const { return m_entries + std::max(m_count, 0); }

 private:
  dirent** m_entries = nullptr;
  int m_count;
};

// Calls visit(entry) for each entry of a folder; a null or empty path is the current folder.
template <class Visitor>
void ForEachEntry(const char* path, Visitor visit) {
  const SortedEntries entries(path == nullptr || *path == '\0' ? "./" : path);
  for (const dirent* entry : entries) visit(*entry);
}

}  // namespace

bool VUtility::FileExists(const char* path) {
  return path != nullptr && vlib::OpenFile(path, "rb") != nullptr;
}

bool VUtility::DirectoryExists(const char* path) {
  return path != nullptr && vlib::Folder(opendir(path)) != nullptr;
}

bool VUtility::DelFile(const char* path) { return path != nullptr && std::remove(path) == 0; }

bool VUtility::CpFile(const char* source, const char* target, bool overwrite) {
  if (source == nullptr || target == nullptr) return false;
  if (!overwrite && FileExists(target)) return false;

  const vlib::File from = vlib::OpenFile(source, "rb");
  if (!from) return false;
  off_t remaining = vlib::SizeOf(from.get());
  if (remaining < 0) return false;

  // Opening the target empties it, so nothing else may be missing then.
  const std::unique_ptr<char[]> block(new (std::nothrow) char[kCopyBlock]);
  if (!block) return false;
  vlib::File to = vlib::OpenFile(target, "wb");
  if (!to) return false;
  while (remaining > 0) {
    const off_t length = std::min(remaining, kCopyBlock);
    const auto count = static_cast<std::size_t>(length);
    if (std::fread(block.get(), 1, count, from.get()) != count) return false;
    if (std::fwrite(block.get(), 1, count, to.get()) != count) return false;
    remaining -= length;
  }
  // Closing writes what the stream still holds; only then is it known that everything was written.
  return std::fclose(to.release()) == 0;
}

bool VUtility::CreateDir(const char* path, bool) { return path != nullptr && mkdir(path, 0770) == 0; }

bool VUtility::RemoveDir(const char* path, bool removeSelf) {
  if (path == nullptr || *path == '\0') return false;
  vlib::Folder folder(opendir(path));
  if (!folder) return false;

  const std::string prefix = IncludePathDelimiter(path);
  bool removed = true;
  while (const dirent* entry = readdir(folder.get())) {
    const std::string_view name = entry->d_name;
    if (!removed || name == "." || name == "..") continue;
    const std::string entryPath = prefix + entry->d_name;
    removed = IsFolder(*entry) ? RemoveDir(entryPath, true) : DelFile(entryPath);
  }
  folder.reset();
  return removed && (!removeSelf || rmdir(path) == 0);
}

std::string VUtility::DirList(const char* path) {
  std::string list;
  ForEachEntry(path, [&](const dirent& entry) { list.append(entry.d_name).append("\n"); });
  return list;
}

std::string VUtility::DirListType(const char* path) {
  std::string list;
  for (const std::string& line : DirListTypeArray(path)) list.append(line).append("\n");
  return list;
}

std::vector<std::string> VUtility::DirListTypeArray(const char* path) {
  std::vector<std::string> list;
  ForEachEntry(path, [&](const dirent& entry) {
    list.push_back(std::string(IsFolder(entry) ? "<DIR>  " : "<FILE> ").append(entry.d_name));
  });
  return list;
}

bool VUtility::LogFile(const char* path, const char* text) {
  if (path == nullptr || text == nullptr) return false;
  const vlib::File file = vlib::OpenFile(path, "ab");
  if (!file) return false;
  std::fputs(text, file.get());
  return true;
}
