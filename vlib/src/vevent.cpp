#include "vevent.h"

#include <pthread.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <new>

#include "vtime.h"

namespace {

constexpr int kSignalled = 0;
constexpr int kTimeOut = 110;
constexpr int kFailure = 111;
constexpr int kNotPermitted = 112;

constexpr std::uint64_t kMicrosecondsPerSecond = 1000000;
constexpr std::uint64_t kNanosecondsPerSecond = 1000000000;

constexpr unsigned long Within32Bits(unsigned long number) { return std::min(number, 0xFFFFFFFFUL); }

// A second or more in microseconds becomes an invalid nanosecond field, which the wait refuses.
timespec Instant(std::uint64_t seconds, std::uint64_t microseconds) {
  timespec instant{};
  instant.tv_sec = static_cast<std::time_t>(seconds);
  instant.tv_nsec = static_cast<long>(std::min(microseconds * 1000, kNanosecondsPerSecond));
  return instant;
}

timespec InstantFromNow(unsigned long seconds, unsigned long microseconds) {
  const std::uint64_t now = VTime::TimeUS();
  std::uint64_t second = now / kMicrosecondsPerSecond + Within32Bits(seconds);
  std::uint64_t microsecond = now % kMicrosecondsPerSecond + Within32Bits(microseconds);
  // Callers rely on the wait refusing what is more than one second, so only one is carried.
  if (microsecond >= kMicrosecondsPerSecond) {
    ++second;
    microsecond -= kMicrosecondsPerSecond;
  }
  return Instant(second, microsecond);
}

timespec InstantSince1970(unsigned long seconds, unsigned long microseconds) {
  return Instant(Within32Bits(seconds), Within32Bits(microseconds));
}

// The two parts of a time in milliseconds.
constexpr unsigned long WholeSeconds(unsigned long milliseconds) { return Within32Bits(milliseconds) / 1000; }
constexpr unsigned long RestInMicroseconds(unsigned long milliseconds) {
  return Within32Bits(milliseconds) % 1000 * 1000;
}

}  // namespace

// The outcome of a wait, for both kinds of result.
struct VEvent::Outcome {
  int code;
  bool signalled;
};

// All there is to an event.
//
// The signals are counted, so that a waiter knows that there was one even if the event has been reset before
// the waiter runs again.
class VEvent::State {
 public:
  State()
      : m_mutexCreated(pthread_mutex_init(&m_mutex, nullptr) == 0),
        m_conditionCreated(m_mutexCreated && pthread_cond_init(&m_condition, nullptr) == 0) {}
  ~State() {
    if (m_conditionCreated) pthread_cond_destroy(&m_condition);
    if (m_mutexCreated) pthread_mutex_destroy(&m_mutex);
  }
  State(const State&) = delete;
  State& operator=(const State&) = delete;

  bool IsUsable() const { return m_conditionCreated; }

  bool Signal() {
    if (!IsUsable() || m_signalled) return false;
    if (pthread_mutex_lock(&m_mutex) != 0) return false;
    const bool becameSignalled = !m_signalled.exchange(true);
    if (becameSignalled) {
      ++m_signals;
      m_closed = pthread_cond_signal(&m_condition) != 0;
    }
    const bool done = becameSignalled && !m_closed;
    return pthread_mutex_unlock(&m_mutex) == 0 && done;
  }

  void Reset() {
    if (!IsUsable() || !m_signalled) return;
    if (pthread_mutex_lock(&m_mutex) != 0) return;
    if (m_signalled.exchange(false)) {
      m_closed = false;
      pthread_cond_broadcast(&m_condition);
    }
    pthread_mutex_unlock(&m_mutex);
  }

  // Waits without limit when `deadline` is null.
  Outcome Wait(const timespec* deadline) {
    if (!IsUsable()) return {kFailure, false};
    if (pthread_mutex_lock(&m_mutex) != 0) return {kFailure, false};
    const bool wasSignalled = m_signalled;
    const std::uint32_t before = m_signals;
    int error = 0;
    // Once, not until signalled: callers rely on any wake-up counting as the signal.
    if (!wasSignalled) {
      error = deadline == nullptr ? pthread_cond_wait(&m_condition, &m_mutex)
                                  : pthread_cond_timedwait(&m_condition, &m_mutex, deadline);
    }
    const bool signalled = error == 0 || m_signals != before;
    while (m_closed) pthread_cond_wait(&m_condition, &m_mutex);
    pthread_mutex_unlock(&m_mutex);
    return {CodeOf(error), signalled};
  }

 private:
  static int CodeOf(int error) {
    switch (error) {
      case 0:
        return kSignalled;
      case ETIMEDOUT:
        return kTimeOut;
      case EPERM:
        return kNotPermitted;
      default:
        return kFailure;
    }
  }

  pthread_mutex_t m_mutex{};
  pthread_cond_t m_condition{};
  const bool m_mutexCreated;
  const bool m_conditionCreated;

  // Written under the mutex.
  std::atomic<bool> m_signalled{false};  // read anywhere
  std::uint32_t m_signals = 0;
  // Set when a signal could not wake anybody: the event then holds back every waiter until it is reset,
  // whatever time the waiter gave, as if the signalling thread had kept the mutex.
  bool m_closed = false;
};

VEvent::VEvent() : m_state(MakeState()) {}

VEvent::~VEvent() = default;

std::shared_ptr<VEvent::State> VEvent::MakeState() {
  try {
    return std::make_shared<State>();
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

bool VEvent::EventInited() const { return m_state != nullptr && m_state->IsUsable(); }

bool VEvent::Signal() {
  // A waiter that it wakes may destroy the event while this is still under way.
  const std::shared_ptr<State> state = m_state;
  return state != nullptr && state->Signal();
}

void VEvent::Reset() {
  const std::shared_ptr<State> state = m_state;
  if (state != nullptr) state->Reset();
}

VEvent::Outcome VEvent::WaitOnce(const timespec* deadline) const {
  const std::shared_ptr<State> state = m_state;
  return state != nullptr ? state->Wait(deadline) : Outcome{kFailure, false};
}

bool VEvent::Wait() { return WaitOnce(nullptr).signalled; }

int VEvent::WaitRet() { return WaitOnce(nullptr).code; }

bool VEvent::Wait(unsigned long seconds, unsigned long microseconds) {
  const timespec deadline = InstantFromNow(seconds, microseconds);
  return WaitOnce(&deadline).signalled;
}

int VEvent::WaitRet(unsigned long seconds, unsigned long microseconds) {
  const timespec deadline = InstantFromNow(seconds, microseconds);
  return WaitOnce(&deadline).code;
}

bool VEvent::Wait(unsigned long milliseconds) {
  return Wait(WholeSeconds(milliseconds), RestInMicroseconds(milliseconds));
}

int VEvent::WaitRet(unsigned long milliseconds) {
  return WaitRet(WholeSeconds(milliseconds), RestInMicroseconds(milliseconds));
}

bool VEvent::WaitUntil(unsigned long seconds, unsigned long microseconds) {
  const timespec deadline = InstantSince1970(seconds, microseconds);
  return WaitOnce(&deadline).signalled;
}

int VEvent::WaitUntilRet(unsigned long seconds, unsigned long microseconds) {
  const timespec deadline = InstantSince1970(seconds, microseconds);
  return WaitOnce(&deadline).code;
}

bool VEvent::WaitUntil(unsigned long milliseconds) {
  return WaitUntil(WholeSeconds(milliseconds), RestInMicroseconds(milliseconds));
}

int VEvent::WaitUntilRet(unsigned long milliseconds) {
  return WaitUntilRet(WholeSeconds(milliseconds), RestInMicroseconds(milliseconds));
}
