#pragma once

#include "tav_string.h"

namespace tavon {

// The arguments of a program in order, including the program's name, and the look-up of options among them.
//
// An option is any argument that equals its name, ignoring letter case. Its value is the argument that comes
// next, even if that is another option.
class tavCommandLine {
 public:
  // The arguments as main receives them. A count of 0 or less gives an empty list.
  tavCommandLine(char* const* argv, int argc);

  // The arguments of a command text, separated by blanks. Several blanks count as one, even inside quotes.
  // Any argument but the first may be in double quotes, and then contain blanks. A quote that is never
  // closed ends the list before it. A null text counts as empty.
  tavCommandLine(const char* commandText);

  // True if an argument equals `name`. `o_value` receives the argument after the first such one, or becomes
  // empty; it may be null.
  bool GetArgument(const tavString& name, tavString* o_value) const;

 private:
  tavArray<tavString> m_arguments;
};

}  // namespace tavon
