#include "vtime.h"

#include <sys/time.h>

#include <cstdint>

namespace {

timeval Now() {
  timeval now{};
  gettimeofday(&now, nullptr);
  return now;
}

}  // namespace

unsigned long VTime::Time() {
  const timeval now = Now();
  return static_cast<std::uint32_t>(now.tv_sec) * 1000U + static_cast<std::uint32_t>(now.tv_usec) / 1000U;
}

void VTime::Time(unsigned long* o_seconds, long* o_microseconds) {
  const timeval now = Now();
  if (o_seconds != nullptr) *o_seconds = static_cast<std::uint32_t>(now.tv_sec);
  if (o_microseconds != nullptr) *o_microseconds = static_cast<std::int32_t>(now.tv_usec);
}

unsigned long long VTime::TimeUS() {
  const timeval now = Now();
  return static_cast<unsigned long long>(now.tv_sec) * 1000000U +
         static_cast<unsigned long long>(now.tv_usec);
}
