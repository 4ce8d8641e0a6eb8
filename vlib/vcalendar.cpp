#include "vcalendar.h"

#include <mutex>

namespace vlib {
namespace {

// Held while the zone's data is used, which the C library guards too, but out of sight of a thread sanitizer.
std::mutex zoneLock;

void StoreIfWanted(int* target, int value) {
  if (target != nullptr) *target = value;
}

}  // namespace

std::tm LocalTime(std::time_t instant) {
  const std::scoped_lock lock(zoneLock);
  tzset();  // the re-entrant call need not look at the time zone again, a server that runs for years must
  std::tm local{};
  if (localtime_r(&instant, &local) == nullptr) return {};
  return local;
}

std::string LocalTimeText(std::time_t instant) {
  const std::tm local = LocalTime(instant);
  char text[64];
  return asctime_r(&local, text) == nullptr ? std::string() : std::string(text);
}

void StoreLocalTime(std::time_t now, int* year, int* yearDay, int* month, int* monthDay, int* weekDay,
                    int* hour, int* minute, int* second) {
  const std::tm local = LocalTime(now);
  StoreIfWanted(year, local.tm_year + 1900);
  StoreIfWanted(yearDay, local.tm_yday);
  StoreIfWanted(month, local.tm_mon);
  StoreIfWanted(monthDay, local.tm_mday);
  StoreIfWanted(weekDay, local.tm_wday);
  StoreIfWanted(hour, local.tm_hour);
  StoreIfWanted(minute, local.tm_min);
  StoreIfWanted(second, local.tm_sec);
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
