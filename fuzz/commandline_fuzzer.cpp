#include <optional>

#include "fuzz_input.h"
#include "reference.h"
#include "tav_commandline.h"

// Command lines that come as one text: which arguments it holds and what follows each of them.
//
// Input: the text, up to its first zero byte.

namespace {

// The text with one blank where there are several, and none at its ends.
std::string SingleBlanks(const std::string& text) {
  std::string result;
  for (const std::string& word : reference::Pieces(text, " ")) {
    if (!word.empty()) result += (result.empty() ? "" : " ") + word;
  }
  return result;
}

// Takes the text apart one character after the other.
std::vector<std::string> Arguments(const std::string& commandText) {
  enum { Plain, Opening, Quoted, Closing } state = Plain;
  std::vector<std::string> arguments(1);
  for (const char c : SingleBlanks(commandText)) {
    if (state == Closing && c != '"') {
      // A blank behind the closing quote is passed over; anything else begins the next argument.
      arguments.emplace_back();
      state = Plain;
      if (c == ' ') continue;
    }
    const bool isFirst = arguments.size() == 1;
    if (state == Plain && c == '"' && !isFirst && arguments.back().empty()) {
      state = Opening;
    } else if (state == Plain && c == ' ') {
      arguments.emplace_back();
    } else if (state == Plain || (state == Opening && c != '"')) {
      arguments.back() += c;
      if (state == Opening) state = Quoted;
    } else if (state == Quoted && c == '"') {
      state = Closing;
    } else if (state == Quoted) {
      arguments.back() += c;
    }
  }
  if (state == Opening || state == Quoted) arguments.pop_back();  // never closed
  return arguments;
}

// What follows the first argument of a name; nothing when there is no such argument.
std::optional<std::string> Following(const std::vector<std::string>& arguments, const std::string& name) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (reference::LowerCase(arguments[i]) != reference::LowerCase(name)) continue;
    return i + 1 < arguments.size() ? arguments[i + 1] : "";
  }
  return std::nullopt;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = FuzzInput(data, size).Field('\0');
  const tavon::tavCommandLine commandLine(text.c_str());
  const std::vector<std::string> arguments = Arguments(text);

  // Asked for are the arguments, and texts that may or may not be one.
  std::vector<std::string> names = arguments;
  for (const char* separator : {" ", "\""}) {
    for (const std::string& piece : reference::Pieces(text, separator)) names.push_back(piece);
  }
  names.emplace_back();
  // More names than this would make long inputs slow, and teach nothing.
  if (names.size() > 300) names.resize(300);

  for (const std::string& name : names) {
    tavon::tavString value = "left over";
    const bool isFound = commandLine.GetArgument(name, &value);
    const std::optional<std::string> following = Following(arguments, name);
    RequireEqual(isFound, following.has_value(), "whether there is", name);
    RequireEqual<std::string>(value, following.value_or(""), "what follows", name);
  }
  return 0;
}
