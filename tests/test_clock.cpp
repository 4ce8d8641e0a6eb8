#include "test_clock.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/time.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <list>
#include <mutex>
#include <vector>

#include "system_calls.h"

namespace {

using Moment = TestClock::Moment;

constexpr Moment kMachine{-1};  // the clock is the machine's
constexpr Moment kEndOfTime = Moment::max();
constexpr std::chrono::seconds kPatience{30};
std::atomic<Moment> standsAt{kMachine};

// A thread in a timed wait while the clock stands.
struct Sleeper {
  pthread_cond_t* condition;
  pthread_mutex_t* mutex;
  Moment until;
  bool isDue = false;     // its time has come
  bool isCalled = false;  // and its condition is no longer used
};

std::mutex sleepersLock;
std::condition_variable sleepersChanged;
std::list<Sleeper> sleepers;

SystemCall<int(pthread_cond_t*, pthread_mutex_t*, const timespec*)> realTimedWait(
    system_calls::NameFor64Bits("pthread_cond_timedwait", "__pthread_cond_timedwait64"));

Moment Now() {
  const Moment standing = standsAt;
  if (standing != kMachine) return standing;
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  return std::chrono::seconds(now.tv_sec) + Moment(now.tv_nsec / 1000);
}

// Needs the lock.
int CountOfSleepers(bool areDue) {
  return static_cast<int>(std::ranges::count(sleepers, areDue, &Sleeper::isDue));
}

// Sets the clock and wakes those who wait for a moment until `due`. Returns when they are awake.
void SetAndWake(Moment moment, Moment due) {
  std::unique_lock lock(sleepersLock);
  standsAt = moment;
  std::vector<Sleeper*> called;
  for (Sleeper& sleeper : sleepers) {
    sleeper.isDue = sleeper.until <= due;
    if (sleeper.isDue) called.push_back(&sleeper);
  }
  lock.unlock();
  for (const Sleeper* sleeper : called) {
    // The thread has the mutex until it waits on the condition: it cannot miss the call.
    pthread_mutex_lock(sleeper->mutex);
    pthread_cond_broadcast(sleeper->condition);
    pthread_mutex_unlock(sleeper->mutex);
  }
  lock.lock();
  for (Sleeper* sleeper : called) sleeper->isCalled = true;
  sleepersChanged.notify_all();
  sleepersChanged.wait(lock, [] { return CountOfSleepers(true) == 0; });
}

}  // namespace

Moment TestClock::Utc(int year, int month, int day, int hour, int minute, int second) {
  const auto date = std::chrono::year(year) / month / day;
  return std::chrono::sys_days(date).time_since_epoch() + std::chrono::hours(hour) +
         std::chrono::minutes(minute) + std::chrono::seconds(second);
}

TestClock::TestClock(Moment moment) { standsAt = moment; }

TestClock::~TestClock() { SetAndWake(kMachine, kEndOfTime); }

void TestClock::Advance(std::chrono::microseconds time) { SetAndWake(Now() + time, Now() + time); }

void TestClock::JumpTo(Moment moment) { SetAndWake(moment, kEndOfTime); }

void TestClock::AwaitSleepers(int threads, const char* file, int line) {
  std::unique_lock lock(sleepersLock);
  if (sleepersChanged.wait_for(lock, kPatience, [=] { return CountOfSleepers(false) == threads; })) return;
  GTEST_FAIL_AT(file, line) << CountOfSleepers(false) << " threads sleep, and " << threads << " are to sleep";
}

extern "C" {

int gettimeofday(timeval* __restrict o_now, void* __restrict) noexcept {
  const Moment now = Now();
  o_now->tv_sec = static_cast<decltype(o_now->tv_sec)>(now.count() / 1000000);
  o_now->tv_usec = static_cast<decltype(o_now->tv_usec)>(now.count() % 1000000);
  return 0;
}

std::time_t time(std::time_t* o_now) noexcept {
  const auto now = static_cast<std::time_t>(Now().count() / 1000000);
  return o_now == nullptr ? now : *o_now = now;
}

int pthread_cond_timedwait(pthread_cond_t* __restrict condition, pthread_mutex_t* __restrict mutex,
                           const timespec* __restrict deadline) {
  if (standsAt.load() == kMachine || deadline->tv_nsec >= 1000000000) {
    return realTimedWait(condition, mutex, deadline);
  }
  const Moment until = std::chrono::seconds(deadline->tv_sec) + Moment(deadline->tv_nsec / 1000);
  std::unique_lock lock(sleepersLock);
  if (until <= Now() || standsAt.load() == kMachine) return ETIMEDOUT;
  const auto self = sleepers.insert(sleepers.end(), {condition, mutex, until});
  sleepersChanged.notify_all();
  lock.unlock();
  const int error = pthread_cond_wait(condition, mutex);
  lock.lock();
  if (self->isDue) {
    // A signal may have come at the same time, so the clock may be about to use the mutex.
    pthread_mutex_unlock(mutex);
    sleepersChanged.wait(lock, [self] { return self->isCalled; });
    lock.unlock();
    pthread_mutex_lock(mutex);
    lock.lock();
  }
  const bool isDue = self->isDue;
  sleepers.erase(self);
  sleepersChanged.notify_all();
  return isDue ? ETIMEDOUT : error;
}

}  // extern "C"
