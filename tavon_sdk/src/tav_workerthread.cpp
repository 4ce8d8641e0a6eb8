#include "tav_workerthread.h"

#include <cerrno>
#include <exception>
#include <new>

#include "dro_error.h"
#include "tav_error.h"
#include "tav_smutex.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_workerthread"};

// Reports the exception that is being handled. A log at a throwing level throws again.
void ReportCurrentException() {
  try {
    throw;
  } catch (const tavError& error) {
    // If the log throws its records, it has printed and stored this one.
    if ((tavError::Level & tavLogLevel_Throw) == 0) tavErrorLog(error);
  } catch (const dro::droError& error) {
    if ((dro::droError::Level & dro::droLogLevel_Throw) == 0) dro::droErrorLog(error);
  } catch (const std::exception& exception) {
    kReport(tavError_OperationFailed, std::string("Exception on a parameter's thread: ") + exception.what());
  } catch (...) {
    kReport(tavError_OperationFailed, "Exception on a parameter's thread");
  }
}

}  // namespace

tavWorkerThread::~tavWorkerThread() {
  if (AskToEnd()) WaitForEnd();
}

tavThreadStart tavWorkerThread::Start(VThread::Work work, void* owner, unsigned long stackSize) {
  const tavSMutex lock(&m_ownersLock);
  if (m_isStarted) return tavThreadStart::Started;
  try {
    if (!m_thread) m_thread = std::make_shared<VThread>();
  } catch (const std::bad_alloc&) {
    return tavThreadStart::NoMemory;
  }
  m_thread->SetAutoRelease(false);
  m_thread->SetWork(work, owner);
  const int error = m_thread->Start2(stackSize);
  m_isStarted = error == 0;
  if (error == ENOMEM) m_thread.reset();  // it was made without all that it needs, and can never start
  if (m_isStarted) return tavThreadStart::Started;
  return m_thread ? tavThreadStart::Failed : tavThreadStart::NoMemory;
}

bool tavWorkerThread::Is(const VThread* thread) const {
  const tavSMutex lock(&m_ownersLock);
  return m_thread.get() == thread;
}

bool tavWorkerThread::AskToEnd() {
  const tavSMutex lock(&m_ownersLock);
  if (m_thread) m_mustEnd = true;
  return m_thread != nullptr;
}

bool tavWorkerThread::MustEnd() const {
  const tavSMutex lock(&m_ownersLock);
  return m_mustEnd;
}

void tavWorkerThread::WaitForEnd() {
  std::shared_ptr<VThread> thread;  // destroyed after the lock is released, because that may wait as well
  {
    const tavSMutex lock(&m_ownersLock);
    thread = m_thread;
  }
  if (!thread) return;
  thread->Stop();
  if (thread->GetThreadHandle() == VThread::GetCurrentThreadHandle()) return;
  const tavSMutex lock(&m_ownersLock);
  if (m_thread != thread) return;
  m_thread.reset();
  m_isStarted = false;
}

void tavWorkerThread::ReportException() {
  try {
    ReportCurrentException();
  } catch (const abi::__forced_unwind&) {
    throw;
  } catch (...) {
    // The log throws, or there is no memory for a record: nobody can be told.
  }
}

}  // namespace tavon
