#include "tav_parameterthread.h"

#include <new>

namespace tavon {

tavThreadStart StartParameterThread(std::unique_ptr<VThread>& o_thread, VThread::Work work, void* parameter,
                                    unsigned long stackSize) {
  try {
    o_thread = std::make_unique<VThread>();
  } catch (const std::bad_alloc&) {
    return tavThreadStart::NoMemory;
  }
  o_thread->SetAutoRelease(false);
  o_thread->SetWork(work, parameter);
  return o_thread->Start(stackSize) ? tavThreadStart::Started : tavThreadStart::Failed;
}

}  // namespace tavon
