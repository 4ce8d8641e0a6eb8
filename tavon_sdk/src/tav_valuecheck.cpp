#include "tav_valuecheck.h"

#include <utf8.h>

#include <algorithm>
#include <span>
#include <string_view>

#include "tav_event.h"
#include "vnumber.h"
#include "vtext.h"

namespace tavon {
namespace {

constexpr std::string_view kDigits = "0123456789";

std::optional<tavString> CheckWord(const tavValueSyntax& syntax, std::string_view text) {
  const auto isGiven = [text](const tavValueWord& word) { return vlib::EqualIgnoringCase(word.word, text); };
  const auto found = std::ranges::find_if(syntax.words, isGiven);
  if (found == syntax.words.end()) return std::nullopt;
  return found->text;
}

bool IsInRange(const tavValueSyntax& syntax, const std::string& number) {
  const double value = vlib::ReadReal(number.c_str());
  return value >= syntax.least && value <= syntax.largest;
}

bool CheckInteger(const tavValueSyntax& syntax, const std::string& text) {
  return !text.empty() && text.find_first_not_of(kDigits) == std::string::npos && IsInRange(syntax, text);
}

// Digits with at most one point. A minus stands only before numbers that can be negative: -0.0 is not the 0.0
// of a slider.
bool IsReal(const tavValueSyntax& syntax, std::string_view text) {
  if (syntax.least < 0 && text.starts_with('-')) text.remove_prefix(1);
  const auto points = std::ranges::count(text, '.');
  return text.find_first_not_of("0123456789.") == std::string_view::npos && points <= 1 &&
         text.find_first_of(kDigits) != std::string_view::npos;
}

std::optional<tavString> CheckReal(const tavValueSyntax& syntax, const tavString& text) {
  if (!IsReal(syntax, text) || !IsInRange(syntax, text)) return std::nullopt;
  return text;
}

std::optional<tavString> CheckPercent(const tavValueSyntax& syntax, const tavString& text) {
  if (!text.ends_with('%')) return CheckReal(syntax, text);
  const std::string number = text.substr(0, text.size() - 1);
  const std::string hundredth = number + "e-2";
  if (!IsReal(syntax, number) || !IsInRange(syntax, hundredth)) return std::nullopt;
  return hundredth;
}

std::optional<tavString> CheckColour(std::string_view text) {
  const std::size_t prefix = text.starts_with('#')                              ? 1
                             : vlib::EqualIgnoringCase(text.substr(0, 2), "0x") ? 2
                                                                                : 0;
  const std::string digits(text.substr(prefix));
  const bool isWhole = digits.size() == 6 || digits.size() == 8;
  if (prefix == 0 || !isWhole || digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) {
    return std::nullopt;
  }
  return "0x" + digits;
}

std::optional<tavString> CheckList(const tavValueSyntax& syntax, std::string_view text) {
  const std::size_t comma = std::min(text.find(','), text.size());
  std::optional<tavString> first = CheckWord(syntax, text.substr(0, comma));
  if (!first || comma == text.size()) return first;

  const std::string numbers(text.substr(comma + 1));
  unsigned int count = 0;
  bool isValid = true;
  vlib::ForEachPiece(numbers, ",", [&](std::string_view number, bool) {
    isValid = isValid && CheckReal(syntax, std::string(number));
    ++count;
  });
  if (!isValid || std::ranges::count(syntax.sizes, count) == 0) return std::nullopt;
  return *first + "," + numbers;
}

bool IsText(std::string_view text) {
  return text.size() <= tavEvent::LargestValue && utf8::is_valid(text.begin(), text.end());
}

std::optional<tavString> If(bool isValid, const tavString& text) {
  return isValid ? std::optional(text) : std::nullopt;
}

// "a", "a or b", "a, b or c".
tavString Choice(std::span<const tavValueWord> words) {
  tavString choice;
  for (const tavValueWord& word : words) {
    const bool isLast = &word == &words.back();
    choice += (choice.empty() ? "" : isLast ? " or " : ", ") + std::string(word.word);
  }
  return choice;
}

std::string Range(const tavValueSyntax& syntax, double scale, const char* unit) {
  return vlib::PrintReal(scale * syntax.least, 2) + unit + " to " +
         vlib::PrintReal(scale * syntax.largest, 2) + unit;
}

tavString PossibleNumber(const tavValueSyntax& syntax) {
  const bool isLimited = syntax.largest < tavValueSyntax().largest;
  return isLimited ? "a number from " + Range(syntax, 1, "") : "a number such as 21.5";
}

}  // namespace

std::optional<tavString> tavCheckValue(const tavParameterType& type, const tavString& text) {
  const tavValueSyntax& syntax = type.syntax;
  if (text.empty()) return std::nullopt;
  switch (syntax.form) {
    case tavValueForm_Any:
      return text;
    case tavValueForm_Words:
      return CheckWord(syntax, text);
    case tavValueForm_Integer:
      return If(CheckInteger(syntax, text), text);
    case tavValueForm_Real:
      return CheckReal(syntax, text);
    case tavValueForm_Percent:
      return CheckPercent(syntax, text);
    case tavValueForm_Colour:
      return CheckColour(text);
    case tavValueForm_List:
      return CheckList(syntax, text);
    case tavValueForm_Text:
      return If(IsText(text), text);
  }
  return std::nullopt;
}

tavString tavPossibleValues(const tavParameterType& type) {
  const tavValueSyntax& syntax = type.syntax;
  switch (syntax.form) {
    case tavValueForm_Words:
      return Choice(syntax.words);
    case tavValueForm_Integer:
      return "a whole number from " + Range(syntax, 1, "");
    case tavValueForm_Real:
      return PossibleNumber(syntax);
    case tavValueForm_Percent:
      return PossibleNumber(syntax) + ", or " + Range(syntax, 100, "%");
    case tavValueForm_Colour:
      return "# or 0x and six or eight hexadecimal digits";
    case tavValueForm_List:
      return Choice(syntax.words) + ", or one of these and " + std::to_string(syntax.sizes[0]) + " or " +
             std::to_string(syntax.sizes[1]) + " numbers with commas between";
    case tavValueForm_Text:
      return "UTF-8 text of 1 to " + std::to_string(tavEvent::LargestValue) + " bytes";
    default:
      return "any text";
  }
}

}  // namespace tavon
