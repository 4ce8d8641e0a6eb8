#include "tav_parameterthermochronoweek.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "tav_error.h"
#include "tav_time.h"
#include "tav_values.h"
#include "vnumber.h"
#include "vtext.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_parameterthermochronoweek"};

constexpr int kHours = 24;
constexpr int kDays = 7;
constexpr unsigned int kSetPoints = kDays * kHours;
constexpr unsigned int kValueSize = 1 + kSetPoints * kFloatSize;
// An event carries the size of the value modulo 256, and so only the first set-points.
constexpr unsigned int kSentSetPoints = kValueSize % 256 / kFloatSize;

constexpr unsigned int kPeriod = 1000;  // ms
constexpr unsigned long kStackSize = 262144;

// Where the set-point of an hour of the week is in the value.
constexpr std::size_t OffsetOf(std::size_t hourOfWeek) { return 1 + kFloatSize * hourOfWeek; }

// The schedule's day (0 is Monday) for a calendar's week day (0 is Sunday).
constexpr int ScheduleDay(int weekDay) { return weekDay == 0 ? kDays - 1 : weekDay - 1; }

// The next hour for which a set-point is due.
struct DueHour {
  int day;
  int hour;
  unsigned int wait;   // ms after `start`, to one second before the hour
  unsigned int start;  // ms on the clock that wraps
};

DueHour NextHour() {
  int weekDay = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
  tavTime::GetDateTime(nullptr, nullptr, nullptr, nullptr, &weekDay, &hour, &minute, &second);
  // At hh:59:59 there is a whole hour to wait; in a leap second it is one second less.
  const int remaining = 3599000 - 60000 * minute - 1000 * second;
  const bool isLastHour = hour == kHours - 1;
  return {.day = ScheduleDay(isLastHour ? (weekDay + 1) % kDays : weekDay),
          .hour = isLastHour ? 0 : hour + 1,
          .wait = static_cast<unsigned int>(remaining > 0 ? remaining : remaining + 3600000),
          .start = static_cast<unsigned int>(tavTime::GetTime())};
}

// True if the text is a list, and so a whole schedule.
bool WriteSchedule(const tavString& text, unsigned char* o_value) {
  const bool isList = text.find(',') != tavString::npos;
  if (isList) std::fill_n(o_value, kValueSize, static_cast<unsigned char>(0));

  // Reading a number ends at the comma behind it: the pieces need no copies.
  std::size_t index = 0;  // of the piece: the active byte is piece 0, the set-points follow
  vlib::ForEachPiece(text, ",", [&](std::string_view piece, bool) {
    if (index == 0) {
      *o_value = static_cast<unsigned char>(vlib::ReadSigned32(piece.data(), 10));
    } else if (index <= kSetPoints) {
      StoreFloat(vlib::NarrowToFloat(vlib::ReadReal(piece.data())), o_value + 1 + (index - 1) * kFloatSize);
    }
    ++index;
  });
  return isList;
}

void EncodeSchedule(const tavString& text, unsigned char* o_value) { WriteSchedule(text, o_value); }

tavString ScheduleText(const unsigned char* value) {
  tavString text = tavString::FromInt(value[0]);
  for (std::size_t offset = 1; offset < kValueSize; offset += kFloatSize) {
    text.append(",").append(tavString::FromFloat(LoadFloat(value + offset), 2));
  }
  return text;
}

}  // namespace

const tavParameterType tavParameterThermoChronoWeek::Type{
    .id = tavObject_ParameterThermoChronoWeek,
    .name = TypeName,
    .source = "tav_parameterthermochronoweek",
    .size = kValueSize,
    .encode = EncodeSchedule,
    .toText = ScheduleText,
    .compare = CompareUnordered<kValueSize>,
    .syntax = {.form = tavValueForm_List, .words = tavOnOffWords, .sizes = {kSentSetPoints, kSetPoints}},
    .lines = {
        .noBuffer = 25, .setDataFromString = 72, .setDataValue = 98, .getDataValue = 102, .comparison = 211}};

tavParameterThermoChronoWeek::tavParameterThermoChronoWeek() : tavTypedParameter(Type) {
  if (m_thread.Start(thread_procedure, this, kStackSize) != tavThreadStart::Started) {
    kReport(tavError_OperationFailed, "Can not start thread for tavParameterThermoChronoWeek\n", {123});
  }
}

tavParameterThermoChronoWeek::~tavParameterThermoChronoWeek() { term_thread(); }

unsigned char tavParameterThermoChronoWeek::GetActive() const {
  const tavSMutex lock(&m_lock);
  return Value()[0];
}

void tavParameterThermoChronoWeek::SetActive(unsigned char active) { SetData(&active, 1, 0); }

unsigned int tavParameterThermoChronoWeek::GetOffsetTime() const {
  const tavSMutex lock(&m_lock);
  return m_offsetTime;
}

void tavParameterThermoChronoWeek::SetOffsetTime(unsigned int milliseconds) {
  const tavSMutex lock(&m_lock);
  m_offsetTime = milliseconds;
}

float tavParameterThermoChronoWeek::GetCurrentTemperature() const {
  const tavSMutex lock(&m_lock);
  return m_currentTemperature;
}

void tavParameterThermoChronoWeek::GetDay(EDays day, float* o_float_buffer_24) const {
  if (o_float_buffer_24 == nullptr) kReport(tavError_InvalidArgument, "o_float_buffer_24 == 0", {241});
  constexpr std::array days = {Days_Monday, Days_Tuesday,  Days_Wednesday, Days_Thursday,
                               Days_Friday, Days_Saturday, Days_Sunday};
  const auto found = std::find(days.begin(), days.end(), day);
  if (found == days.end()) return;
  const auto midnight = static_cast<std::size_t>(found - days.begin()) * kHours;
  const tavSMutex lock(&m_lock);
  for (std::size_t hour = 0; hour < kHours; ++hour) {
    // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): callers never pass null, unless the log throws
    o_float_buffer_24[hour] = LoadFloat(Value().data() + OffsetOf(midnight + hour));
  }
}

void tavParameterThermoChronoWeek::SetData(const unsigned char* data, const unsigned int& size,
                                           unsigned char flag) {
  tavTypedParameter::SetData(data, size, flag);
  if (GetActive() == 0) return;
  int weekDay = 0;
  int hour = 0;
  tavTime::GetDateTime(nullptr, nullptr, nullptr, nullptr, &weekDay, &hour, nullptr, nullptr);
  update_temperature(ScheduleDay(weekDay), hour);
}

tavEError tavParameterThermoChronoWeek::SetDataFromString(const tavString& text) {
  return SetDataFromString(this, text);
}

tavEError tavParameterThermoChronoWeek::SetDataFromString(tavIParameter* pPrm, const tavString& text) {
  if (pPrm == nullptr) return tavError_NoError;
  if (!pPrm->IsObject(Type.id)) return tavReportOtherType(Type);
  if (text.empty()) return tavError_NoError;
  std::array<unsigned char, kValueSize> value{};
  const bool isList = WriteSchedule(text, value.data());
  pPrm->SetData(value.data(), isList ? kValueSize : 1, isList ? 1 : 0);
  return tavError_NoError;
}

void tavParameterThermoChronoWeek::update_temperature(int day, int hour) {
  if (GetActive() == 0) return;
  const std::int64_t hourOfWeek = std::int64_t{day} * kHours + hour;
  if (hourOfWeek < 0 || hourOfWeek >= kSetPoints) return;
  {
    const tavSMutex lock(&m_lock);
    m_currentTemperature = LoadFloat(Value().data() + OffsetOf(static_cast<std::size_t>(hourOfWeek)));
  }
  OnChangeTemperature();
}

void tavParameterThermoChronoWeek::term_thread() {
  if (m_thread.AskToEnd()) m_thread.WaitForEnd();
}

void tavParameterThermoChronoWeek::thread_procedure(VThread* thread, void* parameter) {
  auto& self = *static_cast<tavParameterThermoChronoWeek*>(parameter);
  DueHour next = NextHour();
  while (!self.m_thread.MustEnd()) {
    const unsigned int passed = static_cast<unsigned int>(tavTime::GetTime()) - next.start;
    if (passed >= next.wait + self.GetOffsetTime()) {
      tavWorkerThread::Guard([&] { self.update_temperature(next.day, next.hour); });
      next = NextHour();
    }
    if (!thread->WaitContinue(kPeriod)) return;
  }
}

tavEError tavParameterThermoChronoWeek::GetBinaryDataFromString(const tavString& text,
                                                                unsigned char* o_pBuffer) {
  return tavEncodeText(Type, text, o_pBuffer);
}

}  // namespace tavon
