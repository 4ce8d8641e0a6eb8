#include <gtest/gtest.h>

#include <optional>

#include "captured_output.h"

namespace {

// Fails a test that prints on standard output what it did not capture: the libraries report their failures
// there, and a report that no test expects is a fault. It is part of every test program and needs nothing
// from the tests.
class UnexpectedOutput : public testing::EmptyTestEventListener {
 public:
  void OnTestStart(const testing::TestInfo&) override { m_capture.emplace(); }

  // The framework has printed this result, and the capture has taken that.
  void OnTestPartResult(const testing::TestPartResult& result) override {
    if (m_capture && !result.passed()) m_capture->PassOn();
  }

  void OnTestEnd(const testing::TestInfo&) override {
    const std::string output = m_capture->Take();
    m_capture.reset();
    if (!output.empty()) ADD_FAILURE() << "This was printed, and the test did not expect it:\n" << output;
  }

 private:
  std::optional<OutputCapture> m_capture;
};

// The environment starts when the framework has its own listeners: this one comes after them, and so ends a
// test before they print how it went.
struct Watch : testing::Environment {
  void SetUp() override { testing::UnitTest::GetInstance()->listeners().Append(new UnexpectedOutput); }
};

[[maybe_unused]] const testing::Environment* const watch = testing::AddGlobalTestEnvironment(new Watch);

}  // namespace
