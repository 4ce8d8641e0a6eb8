#pragma once

#include "tav_error.h"

namespace tavon {

// One step of a scene, linked to the next. The scene owns its items; the links own nothing.
class tavIVirtualItem {
 public:
  virtual ~tavIVirtualItem() = default;

  // 0 for a wait, 1 for the setting of a parameter.
  virtual int GetType() const = 0;

  // Executes the step on the calling thread.
  virtual unsigned int Execute() = 0;

  // Ends an Execute that is running, if it takes time. Any thread may call it.
  virtual void ExitExecute() = 0;

  // The item after this one; null at the end.
  virtual void SetNext(tavIVirtualItem* next) = 0;
  virtual tavIVirtualItem* GetNext() = 0;
};

// The link to the next item. It is set while the scene is built, and only read while it is played.
class tavVirtualItem : public tavIVirtualItem {
 public:
  void SetNext(tavIVirtualItem* next) override { m_next = next; }
  tavIVirtualItem* GetNext() override { return m_next; }

 private:
  tavIVirtualItem* m_next = nullptr;
};

}  // namespace tavon
