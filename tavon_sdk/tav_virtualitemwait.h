#pragma once

#include <memory>
#include <mutex>

#include "tav_virtualitem.h"

class VEvent;

namespace tavon {

// Step of a scene that waits. One thread executes it; any thread may end the wait.
class tavVirtualItemWait : public tavVirtualItem {
 public:
  tavVirtualItemWait();
  ~tavVirtualItemWait() override;

  // Milliseconds to wait; 0 until set. Set it before the item is executed.
  void SetWaitTime(const unsigned int& milliseconds) { m_waitTime = milliseconds; }
  unsigned int GetWaitTime() const { return m_waitTime; }

  int GetType() const override { return tavVirtualItem_Wait; }

  // Announces the next Execute: an ExitExecute from now on ends it at once, even before the wait has begun.
  // Without memory it does nothing, and Execute reports that.
  void Prepare();

  // Waits. Returns 1 if ExitExecute ended the wait, 0 if the time ran out. Without memory it reports code 5
  // and returns 0.
  unsigned int Execute() override;

  void ExitExecute() override;

 private:
  std::shared_ptr<VEvent> WakeUpEvent() const;

  mutable std::mutex m_lock;              // guards the pointer below; never held during a wait
  std::shared_ptr<VEvent> m_wakeUpEvent;  // from Prepare, or the beginning of Execute, to the end of Execute
  unsigned int m_waitTime = 0;
};

}  // namespace tavon
