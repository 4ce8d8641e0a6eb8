#pragma once

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tav_event.h"

// Checks an event as somebody wrote it: an id, a type with or without "Parameter" before its name, and a
// value in the strict syntax of that type. Nothing for a mistake; `o_mistake` is then a line that says what
// was given and what is possible.
std::optional<tavon::tavEvent> CheckEvent(std::string_view id, std::string_view type, std::string_view value,
                                          std::string& o_mistake);

// The lines of a file or pipe that hold an event each: "ID TYPE VALUE", the value to the end of the line.
// Empty lines and those that begin with "#" are skipped.
class EventLines {
 public:
  // Opens a file, "-" for standard input. IsOpen tells whether that worked, or else errno why not.
  explicit EventLines(const char* name);

  bool IsOpen() const { return m_file != nullptr; }
  // True if all lines are there already and can be checked before the first event is sent, unlike those of a
  // pipe.
  bool IsWhole() const;

  // The next line with an event, false at the end. A mistake in it begins with name and number of the line.
  bool Next(std::optional<tavon::tavEvent>& o_event, std::string& o_mistake);
  // After the end: false if no more can be read, for the reason in errno.
  bool IsComplete() const { return m_isComplete; }

 private:
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  struct Deleter {
    void operator()(char* text) const { std::free(text); }
  };

  std::string m_name;
  std::unique_ptr<std::FILE, Closer> m_file;
  std::unique_ptr<char, Deleter> m_line;
  std::size_t m_capacity = 0;
  unsigned long m_number = 0;
  bool m_isComplete = false;
};
