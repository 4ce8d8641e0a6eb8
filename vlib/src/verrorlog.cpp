#include "shared/verrorlog.h"

#include <cstdio>
#include <string_view>

namespace vlib {
namespace {

// Calls append(piece) for each piece of the text, so that it can be printed without memory.
template <class Append>
void ForEachPieceWithPlace(std::string_view message, const char* file, const char* function, int line,
                           Append append) {
  char number[16];
  std::snprintf(number, sizeof number, "%i", line);
  append("File ----------- : ");
  append(file);
  append("\nFunction ------- : ");
  append(function);
  append("\nLine Number ---- : ");
  append(number);
  append("\nCustom Message - : ");
  append(message);
}

}  // namespace

std::string MessageWithPlace(const std::string& message, const char* file, const char* function, int line) {
  std::string text;
  ForEachPieceWithPlace(message, file, function, line, [&](std::string_view piece) { text.append(piece); });
  return text;
}

void PrintMessageWithPlace(const char* message, const char* file, const char* function, int line) {
  ForEachPieceWithPlace(message, file, function, line,
                        [](std::string_view piece) { std::fwrite(piece.data(), 1, piece.size(), stdout); });
  std::fputs("\n", stdout);
}

}  // namespace vlib
