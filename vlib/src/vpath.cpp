#include "shared/vpath.h"

#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <string_view>

namespace vlib {
namespace {

struct MemoryFreer {
  void operator()(char* memory) const { std::free(memory); }
};

bool RemovePrefix(std::string_view& io_text, std::string_view prefix) {
  if (!io_text.starts_with(prefix)) return false;
  io_text.remove_prefix(prefix.size());
  return true;
}

}  // namespace

std::string AbsolutePath(const std::string& path) {
  if (!path.starts_with("./") && !path.starts_with("../")) return path;
  const std::unique_ptr<char, MemoryFreer> current(getcwd(nullptr, 0));
  if (!current) return path;

  std::string_view folder = current.get();
  std::string_view rest = path;
  for (;;) {
    if (RemovePrefix(rest, "../")) {
      folder = folder.substr(0, folder.rfind('/'));  // "/home" becomes "", which stays: the parent of / is /
    } else if (!RemovePrefix(rest, "./")) {
      break;
    }
  }
  if (folder == "/") folder = {};
  return std::string(folder).append("/").append(rest);
}

}  // namespace vlib
