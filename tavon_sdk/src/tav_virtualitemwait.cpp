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
  try {
    if (!m_wakeUp) m_wakeUp = std::make_shared<VEvent>();
  } catch (const std::bad_alloc&) {
  }
}

unsigned int tavVirtualItemWait::Execute() {
  Prepare();
  const std::shared_ptr<VEvent> wakeUp = WakeUp();
  if (!wakeUp) {
    kReport(tavError_OutOfMemory, "Can not allocate tavSysEvent object", {33});
    return 0;
  }
  const bool wasWoken = wakeUp->WaitRet(m_waitTime) == 0;
  const std::scoped_lock lock(m_lock);
  m_wakeUp.reset();
  return wasWoken ? 1 : 0;
}

void tavVirtualItemWait::ExitExecute() {
  if (const std::shared_ptr<VEvent> wakeUp = WakeUp()) wakeUp->Signal();
}

std::shared_ptr<VEvent> tavVirtualItemWait::WakeUp() const {
  const std::scoped_lock lock(m_lock);
  return m_wakeUp;
}

}  // namespace tavon
