#pragma once

#include <gtest/gtest.h>

#include <concepts>

#include "vstringbase.h"

// GoogleTest prints the strings of both libraries as texts and not as lists of characters. The build includes
// this header in front of every test, for it must be known to all of them.
template <class Text>
requires std::derived_from<Text, VStringBase<Text>>
void PrintTo(const Text& text, std::ostream* out) { *out << testing::PrintToString(std::string(text)); }
