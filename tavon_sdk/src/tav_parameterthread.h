#pragma once

#include <memory>

#include "vthread.h"

// The threads of the timed parameters. Internal to the SDK.
namespace tavon {

enum class tavThreadStart { Started, NoMemory, Failed };

// Makes a thread and starts its work. A thread that could not be started stays in `o_thread`; the caller
// reports.
tavThreadStart StartParameterThread(std::unique_ptr<VThread>& o_thread, VThread::Work work, void* parameter,
                                    unsigned long stackSize);

}  // namespace tavon
