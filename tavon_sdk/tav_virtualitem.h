#pragma once

#include "tav_error.h"

namespace tavon {

// What an item says that it is. A scene goes by this, and not by the class, when it treats an item as one of
// the kinds below.
enum tavEVirtualItem {
  tavVirtualItem_Wait = 0,         // a tavVirtualItemWait
  tavVirtualItem_SetParameter = 1  // a tavVirtualItemParameter
};

// One step of a scene, linked to the next. The scene owns its items; the links own nothing.
class tavIVirtualItem {
 public:
  virtual ~tavIVirtualItem() = default;

  // A tavEVirtualItem; any other number for a kind of one's own.
  virtual int GetType() const = 0;

  // Executes the step on the calling thread.
  virtual unsigned int Execute() = 0;

  // Ends an Execute that is running, if it takes time. Any thread may call it.
  virtual void ExitExecute() = 0;

  // The item after this one; null at the end. Once an item belongs to a scene, only the scene sets its link.
  virtual void SetNext(tavIVirtualItem* next) = 0;
  virtual tavIVirtualItem* GetNext() = 0;
};

// The link to the next item.
class tavVirtualItem : public tavIVirtualItem {
 public:
  void SetNext(tavIVirtualItem* next) override { m_next = next; }
  tavIVirtualItem* GetNext() override { return m_next; }

 private:
  tavIVirtualItem* m_next = nullptr;
};

}  // namespace tavon
