// The two error logs, tavErrorLog of the SDK and droErrorLog of the OS library: what they do alike, checked
// for each, and what each says in its own words.
#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>

#include "dro_error.h"
#include "expect_report.h"
#include "failing_allocation.h"
#include "shared/verrorlog.h"
#include "system_calls.h"
#include "tav_error.h"
#include "temporary_folder.h"
#include "test_clock.h"

using namespace dro;
using namespace tavon;

namespace {

// Speaks when every other static object is gone, as a thread that still runs might.
struct LastWords {
  ~LastWords() {
    if (speak != nullptr) speak();
  }
  void (*speak)() = nullptr;
};
__attribute__((init_priority(101))) LastWords lastWords;  // the first to come and the last to go

// What differs between the two. A record is a failure of Go in line 12 of a source file.
tavError Record(int code, const tavError*) {
  return tavBuildErrorLocation(static_cast<tavEError>(code), "100%s", "tav_x", "Go", 12);
}
droError Record(int code, const droError*) {
  return droBuildErrorLocation(static_cast<droEError>(code), "100%s", "dro_x", "Go", 12);
}
int Log(const tavError& record) { return static_cast<int>(tavErrorLog(record)); }
int Log(const droError& record) { return droErrorLog(record); }

// Every test has a log file of its own, and leaves the settings that a process starts with.
template <class Error>
struct BothErrorLogs : testing::Test {
  static constexpr bool isSdk = std::is_same_v<Error, tavError>;
  BothErrorLogs() {
    Error::Level = vlib::LogLevel_File;
    Error::LogFile = path;
    written = 0;
  }
  ~BothErrorLogs() override {
    Error::Level = vlib::LogLevel_Console;
    Error::LogFileSize = 512000;
    Error::ShowErrorCallBack = nullptr;
  }
  static Error Failure(int code) { return Record(code, static_cast<const Error*>(nullptr)); }

  // A file that cannot be cut is told about on the console whatever the level says; the record is dropped. In
  // the OS library the codes are one more, and no line is published.
  void ExpectFault(int code, const char* message, int publishedLine) {
    Error::Level = vlib::LogLevel_File | vlib::LogLevel_Throw;
    written = 512000;
    Report fault{code, "tav_error", "tavErrorLog", message, publishedLine};
    if (!isSdk) fault = {code + 1, "dro_error", "droErrorLog", message};
    ExpectReport(fault, fault.code, [&] {
      const auto shortage = FailingAllocation::OfAtLeast(lacking);
      return Log(failure);
    });
  }

  std::size_t lacking = SIZE_MAX;  // while a fault is logged, allocations of so many bytes fail
  unsigned int& written = isSdk ? tavError::CurrentLogFileSize : droError::_current_log_filesize;
  const TemporaryFolder folder;
  const std::string path = folder.Path("log");
  const Error failure = Failure(8);
  const std::string text = failure.GetDescription();
};
using Records = testing::Types<tavError, droError>;
TYPED_TEST_SUITE(BothErrorLogs, Records);

TYPED_TEST(BothErrorLogs, PrintFailuresAndLeaveNoFile) {
  TypeParam::Level = vlib::LogLevel_Console;
  for (int code = this->isSdk ? 1 : 2; code <= 8; ++code) {
    ExpectReport({code, this->isSdk ? "tav_x" : "dro_x", "Go", "100%s", 12}, code,
                 [&] { return Log(this->Failure(code)); });
  }
  EXPECT_FALSE(std::filesystem::exists(this->path));
}

TYPED_TEST(BothErrorLogs, NeedNoMemoryForARecordUnlessItIsWrittenOrThrown) {
  static const TypeParam* shown = nullptr;
  shown = nullptr;
  TypeParam::ShowErrorCallBack = [](const TypeParam& record) { shown = &record; };
  const auto log = [&](unsigned int level) {
    TypeParam::Level = level;
    const auto shortage = FailingAllocation::OfAtLeast(1);
    return Log(this->failure);
  };
  EXPECT_EQ(log(0), 8);
  EXPECT_EQ(log(vlib::LogLevel_CallBack), 8);
  EXPECT_EQ(shown, &this->failure);
  ExpectReport({8, this->isSdk ? "tav_x" : "dro_x", "Go", "100%s", 12}, 8,
               [&] { return log(vlib::LogLevel_Console); });
}

TYPED_TEST(BothErrorLogs, WriteUntilTheProgramHasEnded) {
  static const TypeParam* record = nullptr;
  record = &this->failure;
  const auto end = [] {
    lastWords.speak = [] { Log(*record); };
    std::exit(0);  // NOLINT(concurrency-mt-unsafe): of a process that the test has made
  };
  EXPECT_EXIT(end(), testing::ExitedWithCode(0), "");
  EXPECT_EQ(ReadFile(this->path), this->text);
}

TYPED_TEST(BothErrorLogs, CountWhatThreadsWriteEvenWithoutALimit) {
  TypeParam::LogFileSize = 0;
  std::thread other([this] { Log(this->failure); });
  Log(this->failure);
  other.join();
  EXPECT_EQ(ReadFile(this->path), this->text + this->text);
  EXPECT_EQ(this->written, 2 * this->text.size());
}

TYPED_TEST(BothErrorLogs, CutTheFileToItsLastHalfUnlessThatIsLittle) {
  std::string contents(40000, 'n');
  WriteFile(this->path, contents);
  TypeParam::LogFileSize = 32001;
  this->written = 40000;
  Log(this->failure);
  EXPECT_EQ(ReadFile(this->path), contents += this->text) << "16000 bytes are too little to keep";
  TypeParam::LogFileSize = 32002;
  this->written = static_cast<unsigned int>(32002 - this->text.size());
  Log(this->failure);
  EXPECT_EQ(ReadFile(this->path), contents += this->text) << "the limit itself is allowed";
  Log(this->failure);
  EXPECT_EQ(ReadFile(this->path), contents.substr(contents.size() - 16001) + this->text);
  EXPECT_EQ(this->written, 16001U) << "half the limit; the entry after the cut is not counted";
}

TYPED_TEST(BothErrorLogs, KeepAFileWholeThatIsShorterThanItsLastHalf) {
  WriteFile(this->path, "a");
  this->written = 512000;
  Log(this->failure);
  EXPECT_EQ(ReadFile(this->path), "a" + this->text)
      << "it was deleted and made anew, and the count not reset";
}

TYPED_TEST(BothErrorLogs, KeepNoMoreOfAFileThanIsRead) {
  WriteFile(this->path, std::string(300000, 'o'));
  this->written = 512000;
  // It shrinks when its size is known.
  const auto shrinking = system_calls::new_array_or_null.ReplaceBy([&](std::size_t size, auto noThrow) {
    std::filesystem::resize_file(this->path, 1);
    return system_calls::new_array_or_null.Real(size, noThrow);
  });
  Log(this->failure);
  EXPECT_EQ(ReadFile(this->path), "o" + this->text);
}

TYPED_TEST(BothErrorLogs, PassARecordOnUnlessItIsThrown) {
  static std::string shown;
  shown.clear();
  TypeParam::ShowErrorCallBack = [](const TypeParam& record) { shown += record.GetDescription(); };
  TypeParam::Level = vlib::LogLevel_CallBack;
  Log(this->failure);
  EXPECT_EQ(shown, this->text);
  TypeParam::Level = vlib::LogLevel_File | vlib::LogLevel_Throw | vlib::LogLevel_CallBack;
  EXPECT_THROW(Log(this->failure), TypeParam);
  EXPECT_EQ(shown, this->text) << "not passed on again";
  EXPECT_EQ(ReadFile(this->path), this->text) << "written before it is thrown";
}

TYPED_TEST(BothErrorLogs, ReportAFileThatCannotBeRead) {
  WriteFile(this->path, "old");
  std::filesystem::remove(this->path);
  this->ExpectFault(4, "Can not rebuild log error file.", 206);
  EXPECT_FALSE(std::filesystem::exists(this->path));
}

TYPED_TEST(BothErrorLogs, ReportAFileThatDoesNotFitIntoMemory) {
  WriteFile(this->path, std::string(300000, 'o'));
  for (const std::size_t bytes : {300000U, 1U}) {
    SCOPED_TRACE(bytes);
    this->lacking = bytes;
    this->ExpectFault(5, "Can not allocate buffer for to rebuild log error file.", 182);
  }
}

TYPED_TEST(BothErrorLogs, ReportAFileThatCannotBeWritten) {
  WriteFile(this->path, "old");
  const auto readOnly = system_calls::fopen.ReplaceBy([](const char* name, const char* mode) {
    return *mode == 'r' ? system_calls::fopen.Real(name, mode) : nullptr;
  });
  this->ExpectFault(4, "Can not write for to rebuild log error file.", 200);
  EXPECT_EQ(ReadFile(this->path), "old");
}

TYPED_TEST(BothErrorLogs, CountAWholeDescriptionAndWriteItToAZeroByteInTheOsLibraryOnly) {
  const TypeParam record(this->failure.GetError(), std::string("a\0b", 3));
  const std::string description = record.GetDescription();
  Log(record);
  EXPECT_EQ(ReadFile(this->path), this->isSdk ? description : description.c_str());
  EXPECT_EQ(this->written, description.size());
}

TYPED_TEST(BothErrorLogs, AreDeletedAsTheirLibrariesDeleteFiles) {
  Log(this->failure);
  TypeParam::DeleteLog();
  EXPECT_FALSE(std::filesystem::exists(this->path));
  if constexpr (TestFixture::isSdk) {
    EXPECT_EQ(TypeParam::DeleteLog(), false) << "it is gone";
  } else {
    TypeParam::Level = vlib::LogLevel_Console;
    ExpectReport({droError_OperationFailed, "dro_osutility", "FileDelete", "Can not delete file"},
                 droError_OperationFailed, TypeParam::DeleteLog);
  }
}

TEST(ErrorLogNotices, HaveTimeAndPlaceInTheOsLibraryOnly) {
  setenv("TZ", "UTC0", 1);
  const TestClock clock(TestClock::Utc(2014, 4, 8, 7, 35, 2));
  EXPECT_EQ(CapturedOutput([] { Log(BothErrorLogs<tavError>::Failure(0)); }), "Info Message : 100%s\n");
  EXPECT_EQ(CapturedOutput([] { Log(BothErrorLogs<droError>::Failure(0)); }),
            "\x1B[37m[Tue Apr  8 07:35:02 2014]\nInfo : 100%s[FILE:dro_x][FUNCTION:Go][LINE:12]\n\x1B[0m");
}

// People search for the texts, misspelling and all. Those of the other codes are in the records of all tests.
TEST(ErrorTexts, StayAsTheyAre) {
  const auto textsOf = [](auto textOf, auto... codes) { return ((textOf(codes) + "\n") + ...); };
  EXPECT_EQ(textsOf(droErrorToString, droError_NoError, droError_OutOfRange, droError_DivisionByZero),
            "The operation completed succefully.\nOut of Range.\nDivision By Zero.\n");
  EXPECT_EQ(textsOf(tavErrorToString, tavError_NoError, tavError_OutOfRange, tavError_DivisionByZero),
            "The operation completed succefully.\nOut of Range.\nDivision By Zero.\n");
  EXPECT_EQ(
      textsOf(tavErrorToString, tavError_NetworkNotReady, tavError_SocketsVersion, tavError_SocketsInProgress,
              tavError_SocketsTaskLimit),
      "The underlying network subsystem is not ready for network communication.\n"
      "The version of Windows Sockets support requested is not provided by this particular Windows "
      "Sockets implementation.\n"
      "A blocking Windows Sockets 1.1 operation is in progress.\n"
      "Limit on the number of tasks supported by the Windows Sockets implementation has been reached.\n");
}

TEST(ErrorTexts, TellThatACodeIsUnknown) {
  EXPECT_EQ(tavErrorToString(static_cast<tavEError>(13)),
            "tavError description not found. Update tavErrorToString function.!");
  EXPECT_EQ(droErrorToString(static_cast<droEError>(11)),
            "droError description not found. Update droErrorToString function.!");
  errno = ENOENT;
  EXPECT_EQ(droErrorStdToString(-1), "2 No such file or directory");
  EXPECT_EQ(droErrorStdToString(0), "0 No error");
}

}  // namespace
