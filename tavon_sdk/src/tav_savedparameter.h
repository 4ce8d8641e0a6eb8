#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The lines of the file that keeps a house. Internal to the SDK.
namespace tavon {

// One parameter in that file.
struct tavSavedParameter {
  // The line for a value that is hexadecimal bytes or, with `isText`, a text in quotes.
  std::string Line(bool isText) const;

  // Reads such a line with either kind of value. Nothing if it is none.
  static std::optional<tavSavedParameter> FromLine(std::string_view line);

  std::uint32_t id = 0;
  std::string type;
  std::string name;    // UTF-8
  std::string value;   // its bytes
  std::string remark;  // for the reader of the file; it is not read back
};

}  // namespace tavon
