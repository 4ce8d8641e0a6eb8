#include "shared/vcalendar.h"

#include <cstdio>
#include <mutex>

namespace vlib {
namespace {

// Held while the C library's data about the time zone is in use. The library has a lock of its own, which
// thread sanitizers cannot see.
std::mutex zoneLock;

constexpr std::array kWeekDays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

void StoreIfWanted(int* o_target, int value) {
  if (o_target != nullptr) *o_target = value;
}

}  // namespace

std::tm LocalTime(std::time_t instant) {
  const std::scoped_lock lock(zoneLock);
  tzset();  // localtime_r may never read the time zone again, but a server runs for years
  std::tm local{};
  if (localtime_r(&instant, &local) == nullptr) return {};
  return local;
}

// As asctime writes it, which uses memory that threads share; asctime_r refuses years beyond 9999.
TimeText LocalTimeText(std::time_t instant) {
  const std::tm local = LocalTime(instant);
  TimeText text;
  std::snprintf(text.data(), text.size(), "%s %s %2d %02d:%02d:%02d %lld",
                kWeekDays.at(static_cast<std::size_t>(local.tm_wday)),
                kMonths.at(static_cast<std::size_t>(local.tm_mon)), local.tm_mday, local.tm_hour,
                local.tm_min, local.tm_sec, 1900LL + local.tm_year);
  return text;
}

void StoreLocalTime(std::time_t now, int* o_year, int* o_yearDay, int* o_month, int* o_monthDay,
                    int* o_weekDay, int* o_hour, int* o_minute, int* o_second) {
  const std::tm local = LocalTime(now);
  StoreIfWanted(o_year, local.tm_year + 1900);
  StoreIfWanted(o_yearDay, local.tm_yday);
  StoreIfWanted(o_month, local.tm_mon);
  StoreIfWanted(o_monthDay, local.tm_mday);
  StoreIfWanted(o_weekDay, local.tm_wday);
  StoreIfWanted(o_hour, local.tm_hour);
  StoreIfWanted(o_minute, local.tm_min);
  StoreIfWanted(o_second, local.tm_sec);
}

std::time_t InstantOf(int year, int month, int day, int hour, int minute, int second) {
  std::tm local{};
  local.tm_year = year < 1900 ? 0 : year - 1900;
  local.tm_mon = static_cast<int>(static_cast<unsigned int>(month) - 1U);  // defined for every int
  local.tm_mday = day;
  local.tm_hour = hour;
  local.tm_min = minute;
  local.tm_sec = second;
  local.tm_wday = -1;
  local.tm_yday = -1;
  local.tm_isdst = -1;
  const std::scoped_lock lock(zoneLock);
  return std::mktime(&local);
}

}  // namespace vlib
