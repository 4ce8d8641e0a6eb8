#include "tav_workerthread.h"

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
  try {
    m_thread = std::make_unique<VThread>();
  } catch (const std::bad_alloc&) {
    return tavThreadStart::NoMemory;
  }
  m_thread->SetAutoRelease(false);
  m_thread->SetWork(work, owner);
  return m_thread->Start(stackSize) ? tavThreadStart::Started : tavThreadStart::Failed;
}

bool tavWorkerThread::AskToEnd() {
  const tavSMutex lock(&m_ownersLock);
  if (Exists()) m_mustEnd = true;
  return m_mustEnd;
}

bool tavWorkerThread::MustEnd() const {
  const tavSMutex lock(&m_ownersLock);
  return m_mustEnd;
}

void tavWorkerThread::WaitForEnd() { m_thread->Stop(); }

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
