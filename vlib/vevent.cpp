#include "vevent.h"

#include <pthread.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <new>
#include <utility>

#include "vtime.h"

namespace {

constexpr int kSignalled = 0;
constexpr int kTimeOut = 110;
constexpr int kFailure = 111;
constexpr int kNotPermitted = 112;

constexpr std::uint64_t kMicrosecondsPerSecond = 1000000;
constexpr std::uint64_t kNanosecondsPerSecond = 1000000000;

constexpr unsigned long Within32Bits(unsigned long number) { return std::min(number, 0xFFFFFFFFUL); }

// A second or more in microseconds is kept as a nanosecond field that is none, for the wait to refuse.
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
  // One second is all that is carried: more microseconds than that are refused by the wait, intended.
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

// What a wait came to, for both kinds of its result.
struct VEvent::Outcome {
  int code;
  bool signalled;
};

// One passage from not signalled to signalled, with what the waiters for it sleep on. It never goes back: a
// reset event gets a new gate, and whoever is still at the old one holds a reference and finds it signalled.
class VEvent::Gate {
 public:
  Gate()
      : m_mutexCreated(pthread_mutex_init(&m_mutex, nullptr) == 0),
        m_conditionCreated(m_mutexCreated && pthread_cond_init(&m_condition, nullptr) == 0) {}
  ~Gate() {
    if (m_conditionCreated) pthread_cond_destroy(&m_condition);
    if (m_mutexCreated) pthread_mutex_destroy(&m_mutex);
  }
  Gate(const Gate&) = delete;
  Gate& operator=(const Gate&) = delete;

  bool IsUsable() const { return m_conditionCreated; }
  bool IsSignalled() const { return m_signalled; }

  bool Signal() {
    if (!IsUsable() || m_signalled) return false;
    if (pthread_mutex_lock(&m_mutex) != 0) return false;
    const bool wasSignalled = m_signalled.exchange(true);
    // The mutex stays locked on this path, intended: until a Reset nobody gets past a broken condition.
    if (!wasSignalled && pthread_cond_signal(&m_condition) != 0) return false;
    return pthread_mutex_unlock(&m_mutex) == 0 && !wasSignalled;
  }

  // For a signalled gate, which nobody starts to wait at any more: so this needs no lock and misses nobody.
  void WakeAll() { pthread_cond_broadcast(&m_condition); }

  // Waits without limit when `deadline` is null.
  Outcome Wait(const timespec* deadline) {
    if (!IsUsable() || pthread_mutex_lock(&m_mutex) != 0) return {kFailure, false};
    int error = 0;
    // Once, not until signalled: any wake-up counts as the signal, intended.
    if (!m_signalled) {
      error = deadline == nullptr ? pthread_cond_wait(&m_condition, &m_mutex)
                                  : pthread_cond_timedwait(&m_condition, &m_mutex, deadline);
    }
    pthread_mutex_unlock(&m_mutex);
    return {CodeOf(error), error == 0 || m_signalled};
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
  std::atomic<bool> m_signalled{false};  // set under the mutex, read anywhere
};

VEvent::VEvent() : m_gate(MakeGate()) {}

VEvent::~VEvent() = default;

// Null when there is no memory for it: the event is then as unusable as one without its mutex.
std::shared_ptr<VEvent::Gate> VEvent::MakeGate() {
  try {
    return std::make_shared<Gate>();
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

std::shared_ptr<VEvent::Gate> VEvent::CurrentGate() const {
  const std::lock_guard lock(m_lock);
  return m_gate;
}

bool VEvent::EventInited() const {
  const std::shared_ptr<Gate> gate = CurrentGate();
  return gate != nullptr && gate->IsUsable();
}

bool VEvent::Signal() {
  const std::shared_ptr<Gate> gate = CurrentGate();
  return gate != nullptr && gate->Signal();
}

void VEvent::Reset() {
  std::shared_ptr<Gate> retired;
  {
    const std::lock_guard lock(m_lock);
    if (m_gate == nullptr || !m_gate->IsSignalled()) return;
    retired = std::exchange(m_gate, MakeGate());
  }
  retired->WakeAll();
}

VEvent::Outcome VEvent::WaitOnce(const timespec* deadline) const {
  const std::shared_ptr<Gate> gate = CurrentGate();
  return gate != nullptr ? gate->Wait(deadline) : Outcome{kFailure, false};
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
