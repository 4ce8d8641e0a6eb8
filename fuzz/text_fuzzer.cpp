#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <utility>

#include "dro_error.h"
#include "dro_string.h"
#include "fuzz_input.h"
#include "reference.h"
#include "tav_error.h"
#include "tav_string.h"

// The operations of both string classes: search, replace, trim, split, extract, case, scrambling, printed
// text, and numbers.
//
// Input: a position, flags ('0' to '3': with letter case or without, forwards or backwards), a base of
// numbers, and three lines: a text, what is sought in it (also the separator, the set of characters to trim,
// the key), and what takes its place.

namespace {

using dro::droString;
using tavon::tavString;

constexpr std::size_t kNotFound = std::string::npos;

struct Case {
  unsigned int position;
  bool noCase;
  bool reverse;
  int base;
  std::string text;
  std::string what;
  std::string with;
};

bool StandsAt(const std::string& text, std::size_t i, const std::string& what) {
  return text.size() - i >= what.size() && std::memcmp(text.data() + i, what.data(), what.size()) == 0;
}

std::size_t Find(std::string text, std::string what, unsigned int position, bool noCase, bool reverse) {
  if (noCase) {
    text = reference::LowerCase(text);
    what = reference::LowerCase(what);
  }
  std::size_t found = kNotFound;
  for (std::size_t i = 0; i <= text.size(); ++i) {
    if (!StandsAt(text, i, what)) continue;
    if (!reverse && i >= position) return i;
    // A position beyond the length of the text counts from its end.
    if (reverse && (position > text.size() || i <= text.size() - position)) found = i;
  }
  return found;
}

std::string ReplaceAll(const std::string& text, const std::string& what, const std::string& with,
                       bool noCase) {
  if (what.empty()) return text;
  std::string result;
  for (std::size_t i = 0; i < text.size();) {
    if (i == Find(text.substr(i, what.size()), what, 0, noCase, false) + i) {
      result += with;
      i += what.size();
    } else {
      result += text[i++];
    }
  }
  return result;
}

bool IsIn(const std::string& set, char c) { return set.find(c) != kNotFound; }

std::string TrimLeft(const std::string& text, const std::string& set) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!IsIn(set, text[i])) return text.substr(i);
  }
  return text;
}

// From the right: the position that the characters to remove begin at, at least `first`.
std::size_t TrimFrom(const std::string& text, const std::string& set, std::size_t first) {
  std::size_t end = text.size();
  while (end > first && IsIn(set, text[end - 1])) --end;
  return end;
}

std::string TrimRightOfSdk(const std::string& text, const std::string& set) {
  const std::size_t end = TrimFrom(text, set, 1);
  return end <= 1 ? text : text.substr(0, end);
}

std::string TrimRightOfOsLibrary(const std::string& text, const std::string& set) {
  const std::size_t end = TrimFrom(text, set, 0);
  if (end > 0) return text.substr(0, end);
  return text.size() == 2 ? text.substr(0, 1) : text;
}

// What both classes do alike. Of the results those of `Text` are compared.
template <class Text>
void CheckCommon(const Case& in) {
  const Text text = in.text;
  const Text what = in.what;

  std::string lower;
  std::string upper;
  for (const char c : in.text) {
    lower += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    upper += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  }
  RequireEqual<std::string>(text.GetLowCase(), lower, "GetLowCase");
  RequireEqual<std::string>(text.GetUpCase(), upper, "GetUpCase");
  RequireEqual<std::string>(text.GetReverse(), std::string(in.text.rbegin(), in.text.rend()), "GetReverse");
  RequireEqual(text.IsEqualNoCase(what), lower == reference::LowerCase(in.what), "IsEqualNoCase");

  const std::size_t found = Find(in.text, in.what, in.position, in.noCase, in.reverse);
  RequireEqual(text.Find(what, in.position, in.noCase, in.reverse), found, "Find");
  Text replaced = text;
  std::string expected = in.text;
  if (found != kNotFound)
    expected = in.text.substr(0, found) + in.with + in.text.substr(found + in.what.size());
  RequireEqual(replaced.FindAndReplace(what, in.with, in.noCase, in.reverse, in.position), found,
               "where FindAndReplace replaced");
  RequireEqual<std::string>(replaced, expected, "FindAndReplace");
  replaced = text;
  replaced.FindAndReplaceAll(what, in.with, in.noCase, in.reverse);
  RequireEqual<std::string>(replaced, ReplaceAll(in.text, in.what, in.with, in.noCase), "FindAndReplaceAll");
  RequireEqual<std::string>(text.GetShrink(what, true), TrimLeft(in.text, in.what),
                            "GetShrink from the left");

  const std::string key = in.what.empty() ? "{7E21C9A4-5B3D-4f08-9C6E-2A7D41B05E93}" : in.what;
  std::string scrambled = in.text;
  for (char& byte : scrambled) {
    for (const char keyByte : key) byte = static_cast<char>(byte ^ keyByte);
  }
  RequireEqual<std::string>(text.GetCrypt(what), scrambled, "GetCrypt");
  RequireEqual<std::string>(text.GetCrypt(what).GetDeCrypt(what), in.text, "GetDeCrypt of GetCrypt");
  std::string buffer = in.text;
  const auto length = static_cast<unsigned int>(buffer.size());
  Text::DataCrypt(reinterpret_cast<unsigned char*>(buffer.data()), length, what);
  RequireEqual(buffer, scrambled, "DataCrypt");

  const std::string printed = in.text.substr(0, in.text.find('\0')) + "|" + std::to_string(in.base);
  const std::string kept = printed.substr(0, in.position == 0 ? 0 : in.position - 1);
  Text format = in.with;
  RequireEqual<std::string>(format.AddFormat(in.position, "%s|%i", in.text.c_str(), in.base), in.with + kept,
                            "AddFormat");
  RequireEqual<std::string>(format.SetFormat(in.position, "%s|%i", in.text.c_str(), in.base), kept,
                            "SetFormat");

  RequireEqual(Text::AsULong(text, in.base), reference::Unsigned32(in.text, in.base), "AsULong");
  const double real = std::strtod(in.text.c_str(), nullptr);
  const double read = Text::AsDouble(text);
  Require(std::bit_cast<std::uint64_t>(read) == std::bit_cast<std::uint64_t>(real), "AsDouble");
  double any = 0;
  std::memcpy(&any, in.text.data(), std::min(in.text.size(), sizeof(any)));
  const int decimals = static_cast<int>(in.position % 20);
  for (const double value : {real, any}) {
    RequireEqual<std::string>(Text::FromDouble(value, decimals), reference::RealText(value, decimals),
                              "FromDouble");
    const auto single = static_cast<float>(value);
    RequireEqual<std::string>(Text::FromFloat(single, decimals), reference::RealText(single, decimals),
                              "FromFloat");
  }
  const std::uint32_t number = reference::Unsigned32(in.text, in.base);
  const auto signedNumber = static_cast<std::int32_t>(number);
  RequireEqual<std::string>(Text::FromULong(number), std::to_string(number), "FromULong");
  RequireEqual<std::string>(Text::FromLong(signedNumber), std::to_string(signedNumber), "FromLong");
  RequireEqual<std::string>(Text::FromInt(signedNumber), std::to_string(signedNumber), "FromInt");
}

void CheckSdk(const Case& in) {
  const tavString text = in.text;
  RequireEqual<std::string>(text.GetShrink(in.what, false), TrimRightOfSdk(in.text, in.what),
                            "tavString::GetShrink from the right");

  tavon::tavArray<tavString> pieces = {"kept"};
  text.GetSplit(&pieces, in.what);
  std::vector<std::string> expected = {"kept"};
  if (!in.what.empty()) {
    for (const std::string& piece : reference::Pieces(in.text, in.what)) expected.push_back(piece);
  }
  Require(std::equal(pieces.begin(), pieces.end(), expected.begin(), expected.end()), "tavString::GetSplit");

  RequireEqual(tavString::AsLong(text, in.base), reference::Signed32(in.text, in.base), "tavString::AsLong");
  RequireEqual(tavString::AsInt(text, in.base), reference::Signed32(in.text, in.base), "tavString::AsInt");
}

// The text after an edit that refuses what is beyond the end of the text; nothing when it was refused.
template <class Edit>
std::optional<std::string> Edited(const std::string& text, Edit edit) {
  droString edited = text;
  try {
    (edited.*edit.first)(edit.second);
    return edited;
  } catch (const std::out_of_range&) {
    RequireEqual<std::string>(edited, text, "a text that was refused an edit");
    return std::nullopt;
  }
}

void CheckErasing(const Case& in) {
  const std::string& text = in.text;
  const unsigned int n = in.position;
  const bool isWithin = n <= text.size();
  using Expected = std::optional<std::string>;
  const auto first = Edited(text, std::pair(&droString::EraseFirstChars, n));
  const auto last = Edited(text, std::pair(&droString::EraseLastChars, n));
  const auto at = Edited(text, std::pair(&droString::EraseCharAt, n));
  Require(first == (isWithin ? Expected(text.substr(n)) : std::nullopt), "EraseFirstChars");
  Require(last == (isWithin ? Expected(text.substr(0, text.size() - n)) : std::nullopt), "EraseLastChars");
  Expected without;
  if (isWithin) without = text.substr(0, n) + (n < text.size() ? text.substr(n + 1) : "");
  Require(at == without, "EraseCharAt");
}

void CheckExtract(const Case& in) {
  droString between = "untouched";
  const int result = droString(in.text).Extract(&between, in.what, in.with, in.noCase, in.position);

  const std::size_t begin = Find(in.text, in.what, in.position, in.noCase, false);
  const std::size_t from = begin + in.what.size();
  std::size_t end = kNotFound;
  if (begin != kNotFound && from < in.text.size())
    end = Find(in.text, in.with, static_cast<unsigned int>(from) + in.position, in.noCase, false);
  RequireEqual(result, end == kNotFound ? -1 : static_cast<int>(begin),
               "where Extract found the begin marker");
  RequireEqual<std::string>(between, end == kNotFound ? "untouched" : in.text.substr(from, end - from),
                            "Extract");
}

void CheckOsLibrary(const Case& in) {
  const droString text = in.text;
  RequireEqual<std::string>(text.GetShrink(in.what, false), TrimRightOfOsLibrary(in.text, in.what),
                            "droString::GetShrink from the right");
  CheckErasing(in);
  CheckExtract(in);

  // An empty separator separates nothing.
  std::vector<std::string> expected =
      in.what.empty() ? std::vector<std::string>{} : reference::Pieces(in.text, in.what);
  const bool endsEmpty = !expected.empty() && expected.back().empty();
  std::erase(expected, "");
  dro::droArray<unsigned char> serial;
  droString::SerialStringToData(&serial, text, in.what);
  Require(std::equal(serial.begin(), serial.end(), expected.begin(),
                     in.text.empty() ? expected.begin() : expected.end(),
                     [](unsigned char byte, const std::string& piece) {
                       return byte == reference::Unsigned32(piece, 16) % 256;
                     }),
          "SerialStringToData");
  dro::droMap<droString, droString> map;
  text.GetSplitAsMap(&map, in.what);
  dro::droMap<droString, droString> expectedMap;
  for (std::size_t i = 0; i + 1 < expected.size(); i += 2) {
    expectedMap.try_emplace(expected[i], expected[i + 1]);
  }
  Require(map == expectedMap, "GetSplitAsMap");
  if (endsEmpty) expected.emplace_back();
  dro::droArray<droString> pieces;
  text.GetSplit(&pieces, in.what);
  Require(std::equal(pieces.begin(), pieces.end(), expected.begin(), expected.end()), "droString::GetSplit");

  const std::int64_t number = reference::Signed64(in.text, in.base);
  RequireEqual(droString::AsLongLong(text, in.base), number, "AsLongLong");
  RequireEqual(droString::AsLong(text, in.base), static_cast<std::int32_t>(number & 0xFFFFFFFF),
               "droString::AsLong");
  RequireEqual<std::string>(droString::FromLongLong(number), std::to_string(number), "FromLongLong");

  const char sought = in.what.empty() ? ' ' : in.what[0];
  std::size_t count = 0;
  for (const char c : in.text) count += c == sought;
  RequireEqual(text.GetCharacterCount(sought), count, "GetCharacterCount");
  const bool isDigit = std::strchr("0123456789", sought) != nullptr && sought != 0;
  const bool isHex = std::strchr("0123456789abcdefABCDEF", sought) != nullptr && sought != 0;
  RequireEqual(droString::IsDigit(sought), isDigit, "IsDigit");
  RequireEqual(droString::IsHexChar(sought), isHex, "IsHexChar");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  tavon::tavError::Level = 0;
  dro::droError::Level = 0;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  Case in{};
  // '0' is the start; 255 stands for the largest position there is.
  const auto position = static_cast<unsigned char>(input.Byte() - '0');
  in.position = position == 255 ? 0xFFFFFFFF : position;
  const unsigned char flags = input.Byte();
  in.noCase = flags % 2 != 0;
  in.reverse = flags / 2 % 2 != 0;
  constexpr int bases[] = {10, 16, 8, 0, 2, 36};
  in.base = bases[input.Byte() % 6];
  in.text = input.Field();
  in.what = input.Field();
  in.with = input.Rest();

  CheckCommon<tavString>(in);
  CheckCommon<droString>(in);
  CheckSdk(in);
  CheckOsLibrary(in);
  return 0;
}
