#include "tav_commandline.h"

#include <algorithm>
#include <string_view>

namespace tavon {
namespace {

// The text without blanks at its ends and with single blanks inside.
std::string SingleBlanks(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c != ' ' || (!result.empty() && result.back() != ' ')) result.push_back(c);
  }
  if (!result.empty() && result.back() == ' ') result.pop_back();
  return result;
}

}  // namespace

tavCommandLine::tavCommandLine(char* const* argv, int argc) {
  for (int i = 0; i < argc; ++i) m_arguments.emplace_back(argv[i]);
}

tavCommandLine::tavCommandLine(const char* commandText) {
  const std::string text = SingleBlanks(commandText == nullptr ? "" : commandText);
  constexpr std::size_t none = std::string::npos;

  std::size_t start = 0;
  for (;;) {
    if (start != 0 && text[start] == '"') {
      const std::size_t first = text.find_first_not_of('"', start);
      const std::size_t closing = first == none ? none : text.find('"', first);
      if (closing == none) return;
      m_arguments.emplace_back(text.substr(first, closing - first));
      start = text.find_first_not_of('"', closing);
      if (start == none) return;
      if (text[start] == ' ') ++start;
    } else {
      const std::size_t blank = text.find(' ', start);
      m_arguments.emplace_back(text.substr(start, blank == none ? none : blank - start));
      if (blank == none) return;
      start = blank + 1;
    }
  }
}

bool tavCommandLine::GetArgument(const tavString& name, tavString* o_value) const {
  if (o_value != nullptr) o_value->clear();
  const auto option = std::find_if(m_arguments.begin(), m_arguments.end(),
                                   [&](const tavString& argument) { return argument.IsEqualNoCase(name); });
  if (option == m_arguments.end()) return false;
  if (o_value != nullptr && option + 1 != m_arguments.end()) *o_value = option[1];
  return true;
}

}  // namespace tavon
