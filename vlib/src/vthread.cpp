#include "vthread.h"

#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <cstdint>
#include <memory>
#include <mutex>
#include <new>

namespace {

constexpr int kNoWork = -2;

}  // namespace

// All there is to a thread but its stop event, owned by the object and by its running threads together. The
// object may be gone as soon as others can read a handle of 0, so a thread's last steps are made here.
//
// Each thread of an object is a run of its work. Runs work one after the other, in the order in which they
// are made: the one before has usually been stopped and waited for, but a work that restarts itself and an
// auto-release object get a new thread while that run is still at work.
class VThread::State : public std::enable_shared_from_this<State> {
 public:
  struct Run;

  explicit State(VThread* object) : m_object(object) {}

  // The operations of VThread.
  void SetWork(Work work, void* argument);
  int Start(unsigned long stackSize);
  bool CreateSuspended(bool suspended);
  void SetAutoRelease(bool on);
  void Stop();
  int Kill();
  pthread_t Handle() const { return m_handle; }
  unsigned long ThreadId() const { return m_threadId; }

  // Stops every run, also one that a work starts anew meanwhile.
  void StopAll();

  // The life of a new thread, and its last steps.
  void Live(const Run& run);
  void End(const Run& run);

 private:
  using Lock = std::unique_lock<std::mutex>;

  // To be called with the lock held, which Start and Stop release while they wait for a thread.
  int Start(Lock& lock, unsigned long stackSize);
  int MakeThread(unsigned long stackSize);
  // Stops the runs that were made so far. False when the caller cannot wait for their end.
  bool Stop(Lock& lock);

  VThread* const m_object;

  // Guards all members but the atomic ones. It is held while a thread is made, so that no thread can end
  // before its handle is stored.
  std::mutex m_mutex;
  std::condition_variable m_changed;  // when a run has ended or is let go
  bool m_autoRelease = false;
  void* m_argument = nullptr;
  Work m_work = nullptr;
  bool m_createSuspended = false;
  std::atomic<pthread_t> m_handle{0};        // of the latest run
  std::atomic<unsigned long> m_threadId{0};  // of the run whose turn it is

  // Runs have numbers from 1.
  std::uint64_t m_runsMade = 0;
  std::uint64_t m_runsEnded = 0;
  std::uint64_t m_lastRunToStop = 0;
  std::uint64_t m_runToJoin = 0;  // the last one whose thread a Stop joins: it must not detach itself
};

// What a thread is made with.
struct VThread::State::Run {
  const std::shared_ptr<State> state;
  const std::uint64_t number;
  const bool isHeld;
};

void VThread::State::SetWork(Work work, void* argument) {
  const Lock lock(m_mutex);
  m_work = work;
  m_argument = argument;
}

int VThread::State::Start(unsigned long stackSize) {
  Lock lock(m_mutex);
  return Start(lock, stackSize);
}

bool VThread::State::CreateSuspended(bool suspended) {
  Lock lock(m_mutex);
  if (m_handle != 0) return true;
  m_createSuspended = suspended;
  return Start(lock, 0) == 0;
}

void VThread::State::SetAutoRelease(bool on) {
  const Lock lock(m_mutex);
  if (m_handle == 0) m_autoRelease = on;
}

void VThread::State::Stop() {
  Lock lock(m_mutex);
  if (m_handle != 0) Stop(lock);
}

void VThread::State::StopAll() {
  Lock lock(m_mutex);
  while (m_handle != 0) {
    if (!Stop(lock)) return;
  }
}

int VThread::State::Kill() {
  const Lock lock(m_mutex);
  return m_handle != 0 ? pthread_kill(m_handle, SIGINT) : 0;
}

int VThread::State::Start(Lock& lock, unsigned long stackSize) {
  for (;;) {
    if (m_createSuspended && m_handle != 0) {
      m_createSuspended = false;
      m_changed.notify_all();
      return 0;
    }
    if (m_work == nullptr) return kNoWork;
    if (m_handle == 0 || !Stop(lock)) return MakeThread(stackSize);
    // Another caller may have started it while the lock was released: look again.
  }
}

int VThread::State::MakeThread(unsigned long stackSize) {
  if (!m_object->m_stopEvent.EventInited()) return ENOMEM;
  pthread_attr_t attributes;
  if (stackSize != 0) {
    // Never destroyed: attributes that hold only a stack size own nothing.
    if (const int error = pthread_attr_init(&attributes); error != 0) return error;
    if (const int error = pthread_attr_setstacksize(&attributes, stackSize); error != 0) return error;
  }
  // Given to the thread below, which cppcheck does not see.
  // cppcheck-suppress unreadVariable
  std::unique_ptr<Run> run(new (std::nothrow) Run{shared_from_this(), m_runsMade + 1, m_createSuspended});
  if (run == nullptr) return ENOMEM;
  pthread_t thread{};
  const int error = pthread_create(&thread, stackSize != 0 ? &attributes : nullptr, workStatic, run.get());
  if (error != 0) return error;
  static_cast<void>(run.release());  // the thread's own now
  ++m_runsMade;
  m_handle = thread;
  return 0;
}

bool VThread::State::Stop(Lock& lock) {
  const std::uint64_t run = m_runsMade;
  m_lastRunToStop = run;
  m_object->m_stopEvent.Signal();
  if (m_autoRelease || m_threadId == GetCurrentThreadID()) return false;
  if (m_runToJoin > m_runsEnded) {  // another Stop is joining: one claim at a time
    m_changed.wait(lock, [&] { return m_runsEnded >= run; });
  } else {
    m_runToJoin = run;
    const pthread_t thread = m_handle;
    lock.unlock();
    pthread_join(thread, nullptr);
    lock.lock();
  }
  return true;
}

void VThread::State::Live(const Run& run) {
  Lock lock(m_mutex);
  m_changed.wait(lock, [&] { return m_runsEnded + 1 == run.number; });
  m_threadId = GetCurrentThreadID();
  if (m_autoRelease) pthread_detach(pthread_self());
  m_changed.wait(lock, [&] { return !run.isHeld || !m_createSuspended; });
  const Work work = m_work;
  void* const argument = m_argument;
  lock.unlock();
  if (work != nullptr) work(m_object, argument);
}

void VThread::State::End(const Run& run) {
  bool mayRelease = false;
  {
    const Lock lock(m_mutex);
    m_runsEnded = run.number;
    m_object->m_stopEvent.Reset();
    if (m_lastRunToStop > m_runsEnded) m_object->m_stopEvent.Signal();
    if (!m_autoRelease && m_runToJoin != run.number) pthread_detach(pthread_self());
    m_threadId = 0;
    if (m_runsEnded == m_runsMade) {
      mayRelease = m_autoRelease;
      m_handle = 0;
    }
    m_changed.notify_all();
  }
  if (mayRelease) delete m_object;
}

// NOLINTNEXTLINE(concurrency-mt-unsafe): unsafe only where it is implemented with SIGALRM, not so on Linux
void VThread::SleepS(unsigned long seconds) { sleep(static_cast<unsigned int>(seconds)); }

void VThread::SleepM(unsigned long milliseconds) { usleep(static_cast<std::uint32_t>(milliseconds) * 1000U); }

void VThread::SleepU(unsigned long microseconds) { usleep(static_cast<useconds_t>(microseconds)); }

unsigned long VThread::GetCurrentThreadID() { return pthread_self(); }

unsigned long VThread::GetCurrentThreadHandle() { return pthread_self(); }

VThread::VThread() : m_state(MakeState(this)) {}

VThread::VThread(Work work, void* argument, bool suspended) : VThread() {
  SetWork(work, argument);
  if (suspended) CreateSuspended(true);
}

VThread::~VThread() {
  if (m_state != nullptr) m_state->StopAll();
}

std::shared_ptr<VThread::State> VThread::MakeState(VThread* object) {
  try {
    return std::make_shared<State>(object);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void* VThread::workStatic(void* argument) {
  const std::unique_ptr<State::Run> run(static_cast<State::Run*>(argument));
  // In a destructor, so that a work that leaves by pthread_exit ends like any other.
  struct AtEnd {
    const State::Run& run;
    ~AtEnd() { run.state->End(run); }
  };
  const AtEnd atEnd{*run};
  run->state->Live(*run);
  return nullptr;
}

void VThread::SetWork(Work work, void* argument) {
  if (m_state != nullptr) m_state->SetWork(work, argument);
}

bool VThread::Start(unsigned long stackSize) { return Start2(stackSize) == 0; }

// Here and below a share of its own keeps the state alive: an auto-release object may be destroyed the moment
// the state's lock is released.
int VThread::Start2(unsigned long stackSize) {
  const std::shared_ptr<State> state = m_state;
  return state != nullptr ? state->Start(stackSize) : ENOMEM;
}

bool VThread::CreateSuspended(bool suspended) {
  const std::shared_ptr<State> state = m_state;
  return state != nullptr && state->CreateSuspended(suspended);
}

void VThread::SetAutoRelease(bool on) {
  if (m_state != nullptr) m_state->SetAutoRelease(on);
}

void VThread::Stop() {
  const std::shared_ptr<State> state = m_state;
  if (state != nullptr) state->Stop();
}

int VThread::Kill() {
  const std::shared_ptr<State> state = m_state;
  return state != nullptr ? state->Kill() : 0;
}

bool VThread::WaitContinue(unsigned long milliseconds) { return !m_stopEvent.Wait(milliseconds); }

bool VThread::WaitContinue(unsigned long seconds, unsigned long microseconds) {
  return !m_stopEvent.Wait(seconds, microseconds);
}

int VThread::WaitContinueRet(unsigned long milliseconds) { return m_stopEvent.WaitRet(milliseconds); }

int VThread::WaitContinueRet(unsigned long seconds, unsigned long microseconds) {
  return m_stopEvent.WaitRet(seconds, microseconds);
}

bool VThread::WaitContinueUntil(unsigned long milliseconds) { return !m_stopEvent.WaitUntil(milliseconds); }

bool VThread::WaitContinueUntil(unsigned long seconds, unsigned long microseconds) {
  return !m_stopEvent.WaitUntil(seconds, microseconds);
}

int VThread::WaitContinueUntilRet(unsigned long milliseconds) {
  return m_stopEvent.WaitUntilRet(milliseconds);
}

int VThread::WaitContinueUntilRet(unsigned long seconds, unsigned long microseconds) {
  return m_stopEvent.WaitUntilRet(seconds, microseconds);
}

bool VThread::Running() const { return GetThreadHandle() != 0; }

unsigned long VThread::GetThreadHandle() const { return m_state != nullptr ? m_state->Handle() : 0; }

unsigned long VThread::GetThreadID() const { return m_state != nullptr ? m_state->ThreadId() : 0; }
