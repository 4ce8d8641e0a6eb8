#include "vthread.h"

#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <cstdint>
#include <mutex>
#include <utility>

#include "vevent.h"

namespace {

constexpr int kNoWork = -2;

}  // namespace

// All there is to a thread, owned by the object and by the running thread together. The object may be gone as
// soon as others can read a handle of 0, so the thread's last steps are made here.
//
// The mutex guards all members except events, atomics and what only a new thread reads. It is held while a
// thread is made, so that no thread can end before its handle is stored.
class VThread::State : public std::enable_shared_from_this<State> {
 public:
  explicit State(VThread* object) : m_object(object) {}

  std::mutex mutex;
  VEvent resumeEvent;
  VEvent stopEvent;
  bool autoRelease = false;
  void* argument = nullptr;
  Work work = nullptr;
  bool createSuspended = false;
  std::atomic<pthread_t> handle{0};
  std::atomic<unsigned long> threadId{0};

  // Start2, to be called with the lock held.
  int Start(std::unique_lock<std::mutex>& lock, unsigned long stackSize);

  // Stops the existing thread; to be called with the lock held, which is released during the wait. False when
  // the caller cannot wait for that thread's end.
  bool Stop(std::unique_lock<std::mutex>& lock);

  // The life of a new thread.
  void Run();

 private:
  int MakeThread(unsigned long stackSize);
  bool End();

  VThread* const m_object;
  std::shared_ptr<State> m_shareOfNewThread;  // from MakeThread until the thread takes it
  bool m_held = false;                        // whether the new thread is to wait for resumeEvent
  bool m_joinClaimed = false;                 // a Stop joins this run's thread: it must not detach itself
  unsigned int m_runsEnded = 0;
  std::condition_variable m_ended;
};

int VThread::State::Start(std::unique_lock<std::mutex>& lock, unsigned long stackSize) {
  for (;;) {
    if (createSuspended && handle != 0) {
      createSuspended = false;
      resumeEvent.Signal();
      return 0;
    }
    if (work == nullptr) return kNoWork;
    if (handle == 0) return MakeThread(stackSize);
    if (!Stop(lock)) return EDEADLK;
    // Another caller may have started it while the lock was released: look again.
  }
}

int VThread::State::MakeThread(unsigned long stackSize) {
  if (!resumeEvent.EventInited() || !stopEvent.EventInited()) return ENOMEM;
  pthread_attr_t attributes;
  if (stackSize != 0) {
    // Never destroyed: attributes that hold only a stack size own nothing.
    if (const int error = pthread_attr_init(&attributes); error != 0) return error;
    if (const int error = pthread_attr_setstacksize(&attributes, stackSize); error != 0) return error;
  }
  resumeEvent.Reset();  // it still lets through since the last held thread was released
  m_held = createSuspended;
  m_shareOfNewThread = shared_from_this();
  pthread_t thread{};
  const int error = pthread_create(&thread, stackSize != 0 ? &attributes : nullptr, workStatic, this);
  if (error == 0) {
    handle = thread;
  } else {
    m_shareOfNewThread.reset();
  }
  return error;
}

bool VThread::State::Stop(std::unique_lock<std::mutex>& lock) {
  stopEvent.Signal();
  if (autoRelease || handle == pthread_self()) return false;
  if (m_joinClaimed) {
    m_ended.wait(lock, [this, before = m_runsEnded] { return m_runsEnded != before; });
  } else {
    m_joinClaimed = true;
    const pthread_t thread = handle;
    lock.unlock();
    pthread_join(thread, nullptr);
    lock.lock();
  }
  return true;
}

void VThread::State::Run() {
  const std::shared_ptr<State> share = std::move(m_shareOfNewThread);
  threadId = GetCurrentThreadID();
  if (autoRelease) pthread_detach(pthread_self());
  if (m_held) resumeEvent.Wait();
  std::pair<Work, void*> task;
  {
    const std::lock_guard lock(mutex);
    task = {work, argument};
  }
  if (task.first != nullptr) task.first(m_object, task.second);
  if (End()) delete m_object;
}

// True when the thread must destroy the object. Otherwise the object may be gone when this returns.
bool VThread::State::End() {
  const std::lock_guard lock(mutex);
  stopEvent.Reset();
  if (!autoRelease && !m_joinClaimed) pthread_detach(pthread_self());
  m_joinClaimed = false;
  ++m_runsEnded;
  m_ended.notify_all();
  threadId = 0;
  handle = 0;
  return autoRelease;
}

// NOLINTNEXTLINE(concurrency-mt-unsafe): unsafe only where it is implemented with SIGALRM, not so on Linux
void VThread::SleepS(unsigned long seconds) { sleep(static_cast<unsigned int>(seconds)); }

void VThread::SleepM(unsigned long milliseconds) { usleep(static_cast<std::uint32_t>(milliseconds) * 1000U); }

void VThread::SleepU(unsigned long microseconds) { usleep(static_cast<useconds_t>(microseconds)); }

unsigned long VThread::GetCurrentThreadID() { return pthread_self(); }

unsigned long VThread::GetCurrentThreadHandle() { return pthread_self(); }

VThread::VThread() : m_state(std::make_shared<State>(this)) {}

VThread::VThread(Work work, void* argument, bool suspended) : VThread() {
  SetWork(work, argument);
  if (suspended) CreateSuspended(true);
}

VThread::~VThread() { Stop(); }

void* VThread::workStatic(void* state) {
  static_cast<State*>(state)->Run();
  return nullptr;
}

void VThread::SetWork(Work work, void* argument) {
  const std::lock_guard lock(m_state->mutex);
  m_state->work = work;
  m_state->argument = argument;
}

bool VThread::Start(unsigned long stackSize) { return Start2(stackSize) == 0; }

// Here and below a share of its own keeps the state alive: an auto-release object may be destroyed the moment
// its lock is released.
int VThread::Start2(unsigned long stackSize) {
  const std::shared_ptr<State> state = m_state;
  std::unique_lock lock(state->mutex);
  return state->Start(lock, stackSize);
}

bool VThread::CreateSuspended(bool suspended) {
  const std::shared_ptr<State> state = m_state;
  std::unique_lock lock(state->mutex);
  if (state->handle != 0) return true;
  state->createSuspended = suspended;
  return state->Start(lock, 0) == 0;
}

void VThread::SetAutoRelease(bool on) {
  const std::lock_guard lock(m_state->mutex);
  if (m_state->handle == 0) m_state->autoRelease = on;
}

void VThread::Stop() {
  const std::shared_ptr<State> state = m_state;
  std::unique_lock lock(state->mutex);
  if (state->handle != 0) state->Stop(lock);
}

int VThread::Kill() {
  const std::shared_ptr<State> state = m_state;
  const std::lock_guard lock(state->mutex);
  return state->handle != 0 ? pthread_kill(state->handle, SIGINT) : 0;
}

bool VThread::WaitContinue(unsigned long milliseconds) { return !m_state->stopEvent.Wait(milliseconds); }

bool VThread::WaitContinue(unsigned long seconds, unsigned long microseconds) {
  return !m_state->stopEvent.Wait(seconds, microseconds);
}

int VThread::WaitContinueRet(unsigned long milliseconds) { return m_state->stopEvent.WaitRet(milliseconds); }

int VThread::WaitContinueRet(unsigned long seconds, unsigned long microseconds) {
  return m_state->stopEvent.WaitRet(seconds, microseconds);
}

bool VThread::WaitContinueUntil(unsigned long milliseconds) {
  return !m_state->stopEvent.WaitUntil(milliseconds);
}

bool VThread::WaitContinueUntil(unsigned long seconds, unsigned long microseconds) {
  return !m_state->stopEvent.WaitUntil(seconds, microseconds);
}

int VThread::WaitContinueUntilRet(unsigned long milliseconds) {
  return m_state->stopEvent.WaitUntilRet(milliseconds);
}

int VThread::WaitContinueUntilRet(unsigned long seconds, unsigned long microseconds) {
  return m_state->stopEvent.WaitUntilRet(seconds, microseconds);
}

bool VThread::Running() const { return m_state->handle != 0; }

unsigned long VThread::GetThreadHandle() const { return m_state->handle; }

unsigned long VThread::GetThreadID() const { return m_state->threadId; }
