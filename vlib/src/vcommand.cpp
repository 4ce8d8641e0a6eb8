#include "shared/vcommand.h"

#include <cerrno>

namespace vlib {
namespace {

// A buffer of 256 bytes has one for the terminator.
constexpr std::size_t kLongestPiece = 255;

}  // namespace

// A program that another thread starts must not inherit the reading end ("e"): closing it here would then not
// end the command, and waiting for it could take forever.
CommandOutput::CommandOutput(const std::string& command) : m_pipe(popen(command.c_str(), "re")) {}

bool CommandOutput::ReadLine(std::string& o_line) {
  o_line.clear();
  while (o_line.size() < kLongestPiece) {
    const int byte = getc_unlocked(m_pipe.get());
    if (byte != EOF) {
      o_line.push_back(static_cast<char>(byte));
      if (byte == '\n') break;
    } else if (errno == EINTR && std::ferror(m_pipe.get()) != 0) {
      std::clearerr(m_pipe.get());
    } else {
      break;
    }
  }
  return !o_line.empty();
}

}  // namespace vlib
