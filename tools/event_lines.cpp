#include "event_lines.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>

#include "datagram_text.h"
#include "decimal.h"
#include "tav_parameterfactory.h"
#include "tav_valuecheck.h"
#include "vtext.h"

using tavon::tavEvent;
using tavon::tavParameterFactory;
using tavon::tavParameterType;

namespace {

// What every name of a type begins with.
constexpr std::string_view kPrefix = "Parameter";

constexpr std::string_view kBlanks = " \t";

// What was given, in one line that a terminal can be shown.
std::string Quoted(std::string_view given) {
  constexpr std::size_t kShown = 60;
  const bool isLong = given.size() > kShown;
  return '"' + Printable(std::string(given.substr(0, kShown))) + (isLong ? "...\"" : "\"");
}

const tavParameterType* FindType(std::string_view name) {
  const auto isMeant = [name](const tavParameterType* type) {
    const std::string_view whole = type->name;
    return vlib::EqualIgnoringCase(whole, name) ||
           vlib::EqualIgnoringCase(whole.substr(kPrefix.size()), name);
  };
  const auto types = tavParameterFactory::GetTypes();
  const auto found = std::ranges::find_if(types, isMeant);
  return found == types.end() ? nullptr : *found;
}

std::string TypeNames() {
  std::string names;
  for (const tavParameterType* type : tavParameterFactory::GetTypes()) {
    names += (names.empty() ? "" : ", ") + std::string(type->name).substr(kPrefix.size());
  }
  return names;
}

// Takes the first word off the text, and the blanks around it.
std::string_view TakeWord(std::string_view& io_text) {
  io_text.remove_prefix(std::min(io_text.find_first_not_of(kBlanks), io_text.size()));
  const std::string_view word = io_text.substr(0, io_text.find_first_of(kBlanks));
  io_text.remove_prefix(word.size());
  io_text.remove_prefix(std::min(io_text.find_first_not_of(kBlanks), io_text.size()));
  return word;
}

}  // namespace

std::optional<tavEvent> CheckEvent(std::string_view id, std::string_view type, std::string_view value,
                                   std::string& o_mistake) {
  std::uint32_t number = 0;
  if (!ReadDecimal(id, number)) {
    o_mistake = "ID is a number from 0 to 4294967295, not " + Quoted(id);
    return std::nullopt;
  }
  const tavParameterType* const known = FindType(type);
  if (known == nullptr) {
    o_mistake = "TYPE is one of " + TypeNames() + ", not " + Quoted(type);
    return std::nullopt;
  }
  const std::optional<tavon::tavString> text = tavon::tavCheckValue(*known, std::string(value));
  if (!text) {
    o_mistake = std::string(known->name) + " takes " + tavPossibleValues(*known) + ", not " + Quoted(value);
    return std::nullopt;
  }
  return tavEvent::FromText(number, known->id, *text);
}

EventLines::EventLines(const char* name)
    : m_name(name), m_file(m_name == "-" ? stdin : std::fopen(name, "re")) {}

bool EventLines::IsWhole() const {
  struct stat status {};
  return fstat(fileno(m_file.get()), &status) == 0 && S_ISREG(status.st_mode);
}

bool EventLines::Next(std::optional<tavEvent>& o_event, std::string& o_mistake) {
  for (;;) {
    char* line = m_line.release();
    const ssize_t size = getline(&line, &m_capacity, m_file.get());
    m_line.reset(line);
    if (size < 0) {
      m_isComplete = std::feof(m_file.get()) != 0;
      return false;
    }
    ++m_number;
    std::string_view rest(line, static_cast<std::size_t>(size));
    if (rest.ends_with('\n')) rest.remove_suffix(1);
    const std::string_view id = TakeWord(rest);
    if (id.empty() || id.starts_with('#')) continue;
    const std::string_view type = TakeWord(rest);
    o_event = CheckEvent(id, type, rest, o_mistake);
    if (!o_event) o_mistake.insert(0, m_name + ':' + std::to_string(m_number) + ": ");
    return true;
  }
}
