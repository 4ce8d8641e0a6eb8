#pragma once

#include <memory>
#include <mutex>

#include "tav_virtualitem.h"

class VEvent;

namespace tavon {

// A wait of some milliseconds in a scene. One thread executes it; any thread may end the wait.
class tavVirtualItemWait : public tavVirtualItem {
 public:
  tavVirtualItemWait();
  ~tavVirtualItemWait() override;

  // Milliseconds; 0 until set. Set before the item is executed.
  void SetWaitTime(const unsigned int& milliseconds) { m_waitTime = milliseconds; }
  unsigned int GetWaitTime() const { return m_waitTime; }

  int GetType() const override { return 0; }

  // Announces the next Execute: an ExitExecute from now on ends it at once, even if it comes before the wait
  // has begun. Without memory it does nothing; Execute then reports.
  void Prepare();

  // Waits. 1 when ExitExecute ended the wait, 0 when the time ran out. Without memory for the wake-up code 5
  // is reported, and the result is 0.
  unsigned int Execute() override;

  void ExitExecute() override;

 private:
  std::shared_ptr<VEvent> WakeUp() const;

  mutable std::mutex m_lock;         // guards the pointer below, and is never held during a wait
  std::shared_ptr<VEvent> m_wakeUp;  // from Prepare, or from the start of Execute, to its end
  unsigned int m_waitTime = 0;
};

}  // namespace tavon
