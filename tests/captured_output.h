#pragma once

#include <string>

// Takes what the process prints on standard output while it lives. Captures nest: the innermost one gets it.
class OutputCapture {
 public:
  OutputCapture();
  ~OutputCapture();
  OutputCapture(const OutputCapture&) = delete;
  OutputCapture& operator=(const OutputCapture&) = delete;

  // What came since the start or the last call.
  std::string Take();

 private:
  int m_capture;
  int m_before;
};

// What a piece of code printed on standard output.
template <class Action>
std::string CapturedOutput(Action action) {
  OutputCapture capture;
  action();
  return capture.Take();
}
