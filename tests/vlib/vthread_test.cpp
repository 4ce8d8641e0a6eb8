#include "vthread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <cerrno>
#include <future>
#include <thread>

#include "system_calls.h"
#include "test_clock.h"

namespace {

constexpr unsigned long kStackSize = 262144;

void Until(const auto& condition) {
  while (!condition()) std::this_thread::yield();
}

void RunToItsEnd(VThread::Work work) {
  VThread thread(work, nullptr, false);
  EXPECT_TRUE(thread.Start(kStackSize));
  Until([&] { return !thread.Running(); });
}

// A thread with what a test sees of its work: it goes on until it is stopped.
struct WorkingThread {
  bool Start() { return thread.Start(kStackSize); }
  static void Work(VThread* self, void* object) {
    auto& working = *static_cast<WorkingThread*>(object);
    ++working.runs;
    working.isAtWork = true;
    while (self->WaitContinue(60000)) continue;
    working.isAtWork = false;
  }
  std::atomic<int> runs{0};
  std::atomic<bool> isAtWork{false};
  VThread thread{Work, this, false};
};

TEST(VThread, HasAThreadUntilItsWorkIsStopped) {
  WorkingThread working;
  EXPECT_TRUE(working.Start());
  EXPECT_TRUE(working.Start()) << "which ends the run before";
  Until([&] { return working.runs == 2; });
  EXPECT_TRUE(working.thread.Running());
  EXPECT_NE(working.thread.GetThreadHandle(), 0U);
  EXPECT_EQ(working.thread.GetThreadID(), working.thread.GetThreadHandle());
  working.thread.Stop();
  EXPECT_FALSE(working.isAtWork) << "Stop waits for the end";
  EXPECT_FALSE(working.thread.Running());
  EXPECT_EQ(working.thread.GetThreadHandle(), 0U);
  EXPECT_EQ(working.thread.GetThreadID(), 0U);
}

TEST(VThread, StopOfAHeldThreadWaitsUntilAnotherLetsItGo) {
  std::atomic<bool> hasWorked{false};
  const auto work = [](VThread*, void* flag) { *static_cast<std::atomic<bool>*>(flag) = true; };
  VThread thread(work, &hasWorked, true);
  auto stopped = std::async(std::launch::async, [&] { thread.Stop(); });
  EXPECT_EQ(stopped.wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
  EXPECT_FALSE(hasWorked);
  thread.Start(0);
  stopped.get();
  EXPECT_TRUE(hasWorked);
}

TEST(VThread, EveryWaitLetsTheWorkGoOnUntilAStop) {
  const TestClock clock(std::chrono::microseconds(1000600000));
  RunToItsEnd([](VThread* self, void*) {
    EXPECT_TRUE(self->WaitContinue(0));
    EXPECT_TRUE(self->WaitContinueUntil(1));
    EXPECT_EQ(self->WaitContinueRet(0), 110);
    EXPECT_EQ(self->WaitContinueUntilRet(1), 110);
    // More microseconds than one second can take are refused at once.
    EXPECT_TRUE(self->WaitContinue(60, 1400000));
    EXPECT_TRUE(self->WaitContinueUntil(2000, 1000000));
    EXPECT_EQ(self->WaitContinueRet(60, 1400000), 111);
    EXPECT_EQ(self->WaitContinueUntilRet(2000, 1000000), 111);
    self->Stop();  // only asks, for the work cannot wait for its own end
    EXPECT_FALSE(self->WaitContinue(60000));
    EXPECT_FALSE(self->WaitContinue(60, 0));
    EXPECT_FALSE(self->WaitContinueUntil(1));
    EXPECT_FALSE(self->WaitContinueUntil(0xFFFFFFFF, 0));
    EXPECT_EQ(self->WaitContinueRet(60000), 0);
    EXPECT_EQ(self->WaitContinueRet(60, 0), 0);
    EXPECT_EQ(self->WaitContinueUntilRet(1), 0);
    EXPECT_EQ(self->WaitContinueUntilRet(0xFFFFFFFF, 0), 0);
  });
}

TEST(VThread, TellsWhyItDoesNotStart) {
  EXPECT_EQ(VThread().Start2(kStackSize), -2) << "there is no work";
  RunToItsEnd([](VThread* self, void*) { EXPECT_EQ(self->Start2(0), EDEADLK) << "by its own work"; });
  WorkingThread working;
  EXPECT_EQ(working.thread.Start2(1), EINVAL) << "a stack of one byte";
  const auto noThreads = system_calls::pthread_attr_setstacksize.Returns(EAGAIN);
  EXPECT_EQ(working.thread.Start2(kStackSize), EAGAIN);
  const auto noMutex = system_calls::pthread_mutex_init.Returns(EAGAIN);
  EXPECT_EQ(WorkingThread().thread.Start2(0), ENOMEM) << "it could not be stopped";
}

TEST(VThread, AutoReleaseObjectIsOnlyAskedToStopAndFreesItself) {
  static std::atomic<bool> mayEnd{false}, hasEnded{false};
  const auto work = [](VThread*, void*) {
    Until([] { return mayEnd.load(); });
    hasEnded = true;
  };
  auto* const thread = new VThread(work, nullptr, false);
  thread->SetAutoRelease(true);
  thread->Start(kStackSize);
  thread->Stop();
  mayEnd = true;
  Until([] { return hasEnded.load(); });
}

TEST(VThread, LetsAnyThreadCallAnyOperation) {
  WorkingThread working;
  std::barrier round(2);
  const auto use = [&] {
    for (int i = 0; i < 50; ++i) {
      round.arrive_and_wait();
      working.thread.SetWork(WorkingThread::Work, &working);
      working.thread.CreateSuspended(false);
      working.Start();
      working.thread.Running();
      working.thread.Stop();
      working.thread.SetAutoRelease(false);
    }
  };
  std::thread another(use);
  use();
  another.join();
  EXPECT_FALSE(working.thread.Running());
}

}  // namespace
