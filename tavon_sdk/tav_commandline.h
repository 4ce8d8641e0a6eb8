#pragma once

#include "tav_string.h"

namespace tavon {

// The arguments of a program, in order, the program's name included, and the look-up of options among them.
//
// An option is any argument that equals the name asked for, letter case ignored; its value is whatever
// argument comes next, another option included.
class tavCommandLine {
 public:
  // The arguments as main receives them. A count of 0 or less gives an empty list.
  tavCommandLine(char* const* argv, int argc);

  // The arguments of one command text, separated by blanks. Runs of blanks count as one, inside quotes too.
  // An argument after the first may stand in double quotes and then holds blanks; a quote that is never
  // closed ends the list before it. A null text counts as empty.
  explicit tavCommandLine(const char* commandText);

  // True when an argument equals `name`. `value` (may be null) receives the argument after the first such
  // one, or becomes empty.
  bool GetArgument(const tavString& name, tavString* value) const;

 private:
  tavArray<tavString> m_arguments;
};

}  // namespace tavon
