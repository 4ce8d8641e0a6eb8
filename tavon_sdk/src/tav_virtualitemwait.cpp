#include "tav_virtualitemwait.h"

#include <new>

#include "vevent.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_virtualitemwait"};

}  // namespace

tavVirtualItemWait::tavVirtualItemWait() = default;

tavVirtualItemWait::~tavVirtualItemWait() { tavVirtualItemWait::ExitExecute(); }

void tavVirtualItemWait::Prepare() {
  const std::scoped_lock lock(m_lock);
  if (m_wakeUpEvent) return;
  try {
    m_wakeUpEvent = std::make_shared<VEvent>();
  } catch (const std::bad_alloc&) {
    return;
  }
  if (!m_wakeUpEvent->EventInited()) m_wakeUpEvent.reset();  // it could not be waited for
}

unsigned int tavVirtualItemWait::Execute() {
  Prepare();
  const std::shared_ptr<VEvent> event = WakeUpEvent();
  if (!event) {
    kReport(tavError_OutOfMemory, "Can not allocate tavSysEvent object", {33});
    return 0;
  }
  const bool wasWoken = event->WaitRet(m_waitTime) == 0;
  const std::scoped_lock lock(m_lock);
  m_wakeUpEvent.reset();
  return wasWoken ? 1 : 0;
}

void tavVirtualItemWait::ExitExecute() {
  if (const std::shared_ptr<VEvent> event = WakeUpEvent()) event->Signal();
}

std::shared_ptr<VEvent> tavVirtualItemWait::WakeUpEvent() const {
  const std::scoped_lock lock(m_lock);
  return m_wakeUpEvent;
}

}  // namespace tavon
