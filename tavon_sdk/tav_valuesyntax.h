#pragma once

#include <array>
#include <limits>
#include <span>

namespace tavon {

// A word that people use for a value.
struct tavValueWord {
  // What they write, and the text that the type's encoder takes for it.
  const char* word;
  const char* text;
};

// The kinds of texts.
enum tavEValueForm {
  tavValueForm_Any,      // the type says nothing: any text, as its encoder takes it
  tavValueForm_Words,    // one of the words and nothing else
  tavValueForm_Integer,  // a whole number in a range
  tavValueForm_Real,     // a number in a range
  tavValueForm_Percent,  // a number in a range, or a hundred times that number and a percent sign
  tavValueForm_Colour,   // "#" or "0x", and six or eight hexadecimal digits
  tavValueForm_List,     // one of the words; or one of them and numbers, with commas between
  tavValueForm_Text      // UTF-8 text that an event can carry
};

// What a strict program accepts as the text of a value, as data: encoders take any text, and a program that
// does not check carries no code for it. See tav_valuecheck.h.
struct tavValueSyntax {
  // The kind of text.
  tavEValueForm form = tavValueForm_Any;

  // For words and lists. Letter case is ignored.
  std::span<const tavValueWord> words = {};

  // For numbers, also those of a list: the range, both ends included.
  double least = std::numeric_limits<float>::lowest();
  double largest = std::numeric_limits<float>::max();

  // For lists: how many numbers there can be.
  std::array<unsigned int, 2> sizes = {};
};

// What the types that are on or off accept.
inline constexpr std::array<tavValueWord, 6> tavOnOffWords = {
    {{"on", "1"}, {"off", "0"}, {"true", "1"}, {"false", "0"}, {"1", "1"}, {"0", "0"}}};
inline constexpr tavValueSyntax tavOnOffSyntax{.form = tavValueForm_Words, .words = tavOnOffWords};

}  // namespace tavon
