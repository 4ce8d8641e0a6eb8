#include "shared/verrorlog.h"

namespace vlib {

std::string MessageWithPlace(const std::string& message, const char* file, const char* function, int line) {
  std::string text;
  text.append("File ----------- : ").append(file).append("\n");
  text.append("Function ------- : ").append(function).append("\n");
  text.append("Line Number ---- : ").append(std::to_string(line)).append("\n");
  text.append("Custom Message - : ").append(message);
  return text;
}

}  // namespace vlib
