#include <utf8.h>

#include "dro_string.h"
#include "fuzz_input.h"
#include "tav_string.h"

// The operations of both string classes: search, replace, trim, split, case, scrambling, numbers and wide
// text.
//
// Input: a position, '0' to heed letter case or '1' to ignore it, a base of numbers ('0' is 10, '1' is 16),
// and three lines: a text, what is sought in it (also the separator, the characters to trim and the key), and
// what takes its place.

namespace {

using dro::droString;
using tavon::tavString;

constexpr std::size_t kNotFound = std::string::npos;

struct Case {
  unsigned int position;
  bool noCase;
  int base;
  std::string text;
  std::string what;
  std::string with;
};

// What is found is there, and not before the start.
template <class Text>
void CheckFind(const Case& in) {
  const Text text = in.text;
  const Text what = in.what;
  const std::size_t first = text.Find(what, in.position, in.noCase, false);
  if (first != kNotFound) {
    Require(first >= in.position, "an occurrence before the start position");
    const Text found = in.text.substr(first, what.size());
    Require(in.noCase ? found.IsEqualNoCase(what) : found == what, "what is found is not there");
  }
}

template <class Text>
void CheckEdits(const Case& in) {
  const Text text = in.text;
  const Text what = in.what;
  RequireEqual<std::string>(text.GetUpCase().GetLowCase(), text.GetLowCase(), "lower case of upper case");
  RequireEqual(text.IsEqualNoCase(what), text.GetUpCase() == what.GetUpCase(), "IsEqualNoCase");
  RequireEqual<std::string>(text.GetCrypt(what).GetDeCrypt(what), in.text, "scrambled twice");

  const Text left = text.GetShrink(what, true);
  Require(text.ends_with(left), "trimmed from the left");
  Require(text.find_first_not_of(what) >= text.size() - left.size(), "what is trimmed from the left");
  Require(text == left || what.find(left[0]) == kNotFound, "what is left begins otherwise");
  const Text right = text.GetShrink(what, false);
  Require(text.starts_with(right), "trimmed from the right");
  RequireEqual(text.find_first_not_of(what, right.size()), kNotFound, "what is trimmed from the right");

  Text all = in.text;
  all.FindAndReplaceAll(what, in.with, true, false);
  Text lower = text.GetLowCase();
  lower.FindAndReplaceAll(what.GetLowCase(), Text(in.with).GetLowCase(), false, false);
  RequireEqual<std::string>(all.GetLowCase(), lower, "FindAndReplaceAll without letter case");
}

// Joining gives back what splitting took apart, and with another separator is replacing. The OS library
// leaves out empty pieces but the last.
void CheckSplit(const Case& in) {
  if (in.what.empty()) return;
  tavon::tavArray<tavString> pieces;
  tavString(in.text).GetSplit(&pieces, in.what);
  std::string joined;
  std::string replaced;
  dro::droArray<droString> nonEmpty;
  for (const tavString& piece : pieces) {
    const bool isLast = &piece == &pieces.back();
    joined += piece + (isLast ? "" : in.what);
    replaced += piece + (isLast ? "" : in.with);
    if (isLast || !piece.empty()) nonEmpty.emplace_back(piece);
  }
  RequireEqual(joined, in.text, "split and joined");
  tavString all = in.text;
  all.FindAndReplaceAll(in.what, in.with, false, false);
  RequireEqual<std::string>(all, replaced, "FindAndReplaceAll");
  dro::droArray<droString> droPieces;
  droString(in.text).GetSplit(&droPieces, in.what);
  Require(droPieces == nonEmpty, "droString::GetSplit");
}

// What is printed of a number reads as the same number.
void CheckNumbers(const Case& in) {
  const std::int64_t number = droString::AsLongLong(in.text, in.base);
  RequireEqual(droString::AsLongLong(droString::FromLongLong(number), 10), number, "AsLongLong");
  RequireEqual(droString::AsLong(in.text, in.base), static_cast<std::int32_t>(number), "AsLong");
  const int decimals = static_cast<int>(1 + in.position % 20);
  const tavString text = tavString::FromDouble(tavString::AsDouble(in.text), decimals);
  const tavString again = tavString::FromDouble(tavString::AsDouble(text), decimals);
  // A small negative number is shown as "-0", which is read as 0 and then shown as "0".
  RequireEqual<std::string>(again, text == "-0" ? "0" : text, "number to text to number");
}

// The round trip to wide text gives the text back, an exception comes for what is no text only, and a buffer
// gets as much of the text as it holds.
template <class Text>
void CheckWideText(const Case& in) {
  const std::string text = in.text.substr(0, in.text.find('\0'));
  const bool isValid = utf8::is_valid(text.begin(), text.end());
  try {
    const std::wstring wide = Text::FromUTF8(text.c_str());
    Require(isValid, "an exception for invalid text");
    RequireEqual<std::string>(Text::AsUTF8(wide.c_str()), text, "UTF-8 to wide text and back");
    std::vector<wchar_t> buffer(1 + in.position % 256, L'#');
    Text::AsWide(text, buffer.data(), static_cast<unsigned int>(buffer.size()));
    Require(wide.substr(0, buffer.size() - 1) == buffer.data(), "the start of the text in a buffer");
  } catch (const utf8::exception&) {
    Require(!isValid, "an exception for invalid text only");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  Case in{};
  // '0' is the start; 255 stands for the largest position there is.
  const auto position = static_cast<unsigned char>(input.Byte() - '0');
  in.position = position == 255 ? 0xFFFFFFFF : position;
  in.noCase = input.Byte() % 2 != 0;
  constexpr int bases[] = {8, 2, 36, 10, 16};
  in.base = bases[input.Byte() % 5];
  in.text = input.Field();
  in.what = input.Field();
  in.with = input.Rest();

  CheckFind<tavString>(in);
  CheckFind<droString>(in);
  CheckEdits<tavString>(in);
  CheckEdits<droString>(in);
  CheckSplit(in);
  CheckNumbers(in);
  CheckWideText<tavString>(in);
  CheckWideText<droString>(in);
  return 0;
}
