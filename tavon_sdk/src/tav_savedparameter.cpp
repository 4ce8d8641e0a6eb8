#include "tav_savedparameter.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace tavon {
namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr char kRemark = '#';
constexpr std::string_view kWordEnds = " \t\r#";

std::string HexByte(char byte) {
  constexpr const char* digits = "0123456789ABCDEF";
  const auto value = static_cast<unsigned char>(byte);
  return {digits[value >> 4], digits[value & 15]};
}

// Text without control characters and quotes, so that it stays on its line and within its quotes.
std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      escaped += {'\\', c};
    } else if (static_cast<unsigned char>(c) < ' ' || c == 0x7F) {
      escaped += "\\x" + HexByte(c);
    } else {
      escaped += c;
    }
  }
  return escaped;
}

std::string Quoted(std::string_view text) { return '"' + Escaped(text) + '"'; }

// Takes a line apart from its start. Each call skips blanks, and is false if what it wants is not there.
class LineReader {
 public:
  explicit LineReader(std::string_view line) : m_rest(line) {}

  bool Id(std::uint32_t& o_id) {
    const std::string_view word = Word();
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), o_id);
    return error == std::errc() && end == word.data() + word.size();
  }

  bool Type(std::string& o_type) {
    o_type = Word();
    return !o_type.empty();
  }

  bool Text(std::string& o_text) {
    if (!IsNext('"')) return false;
    m_rest.remove_prefix(1);
    while (!m_rest.empty() && m_rest.front() != '"') {
      char c = Take();
      if (c == '\\' && !Special(c)) return false;
      o_text += c;
    }
    if (m_rest.empty()) return false;
    m_rest.remove_prefix(1);
    return true;
  }

  bool Value(std::string& o_value) {
    if (IsNext('"')) return Text(o_value);
    std::string_view digits = Word();
    if (digits.empty() || digits.size() % 2 != 0) return false;
    for (char byte = 0; !digits.empty(); digits.remove_prefix(2)) {
      if (!Byte(digits, byte)) return false;
      o_value += byte;
    }
    return true;
  }

  bool End() {
    SkipBlanks();
    return m_rest.empty() || m_rest.front() == kRemark;
  }

 private:
  void SkipBlanks() { m_rest.remove_prefix(std::min(m_rest.find_first_not_of(kBlanks), m_rest.size())); }

  bool IsNext(char wanted) {
    SkipBlanks();
    return !m_rest.empty() && m_rest.front() == wanted;
  }

  std::string_view Word() {
    SkipBlanks();
    const std::string_view word = m_rest.substr(0, m_rest.find_first_of(kWordEnds));
    m_rest.remove_prefix(word.size());
    return word;
  }

  char Take() {
    const char c = m_rest.front();
    m_rest.remove_prefix(1);
    return c;
  }

  // What stands behind a backslash.
  bool Special(char& o_character) {
    if (m_rest.empty()) return false;
    o_character = Take();
    if (o_character != 'x') return o_character == '"' || o_character == '\\';
    if (m_rest.size() < 2 || !Byte(m_rest, o_character)) return false;
    m_rest.remove_prefix(2);
    return true;
  }

  // The first two characters as one byte.
  static bool Byte(std::string_view digits, char& o_byte) {
    unsigned char byte = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + 2, byte, 16);
    o_byte = static_cast<char>(byte);
    return error == std::errc() && end == digits.data() + 2;
  }

  std::string_view m_rest;
};

}  // namespace

std::string tavSavedParameter::Line(bool isText) const {
  std::string line = std::to_string(id) + ' ' + type + ' ' + Quoted(name) + ' ';
  if (isText) {
    line += Quoted(value);
  } else {
    for (const char byte : value) line += HexByte(byte);
  }
  if (!remark.empty()) line += std::string(" ") + kRemark + ' ' + Escaped(remark);
  return line + '\n';
}

std::optional<tavSavedParameter> tavSavedParameter::FromLine(std::string_view line) {
  tavSavedParameter saved;
  LineReader reader(line);
  const bool isWhole = reader.Id(saved.id) && reader.Type(saved.type) && reader.Text(saved.name) &&
                       reader.Value(saved.value) && reader.End();
  return isWhole ? std::optional(std::move(saved)) : std::nullopt;
}

}  // namespace tavon
