#include "vthread.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <atomic>
#include <barrier>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <fstream>
#include <future>
#include <optional>
#include <thread>
#include <vector>

#include "await.h"
#include "failing_allocation.h"
#include "system_calls.h"
#include "test_clock.h"

using testing::ElementsAre;

namespace {

constexpr unsigned long kStackSize = 262144;
constexpr unsigned long kMegabyte = 1048576;

void RunToItsEnd(VThread& thread, unsigned long stackSize = kStackSize) {
  EXPECT_TRUE(thread.Start(stackSize));
  Await([&] { return !thread.Running(); });
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

// A work that only counts its runs.
void CountRun(VThread*, void* io_runs) { ++*static_cast<std::atomic<int>*>(io_runs); }

TEST(VThread, HasAThreadUntilItsWorkIsStopped) {
  WorkingThread working;
  EXPECT_TRUE(working.Start());
  EXPECT_TRUE(working.Start()) << "which ends the run before";
  Await([&] { return working.runs == 2; });
  EXPECT_TRUE(working.thread.Running());
  EXPECT_NE(working.thread.GetThreadHandle(), 0U);
  EXPECT_EQ(working.thread.GetThreadID(), working.thread.GetThreadHandle());
  working.thread.Stop();
  EXPECT_FALSE(working.isAtWork) << "Stop waits for the end";
  EXPECT_FALSE(working.thread.Running());
  EXPECT_EQ(working.thread.GetThreadHandle(), 0U);
  EXPECT_EQ(working.thread.GetThreadID(), 0U);
}

TEST(VThread, IsHeldBeforeItsWorkEachTimeUntilTheNextStart) {
  std::atomic<int> runsOfFirstWork{0}, runsOfLastWork{0};
  VThread thread;
  for (int round = 1; round <= 2; ++round) {
    thread.SetWork(CountRun, &runsOfFirstWork);
    EXPECT_TRUE(thread.CreateSuspended(true));
    Await([&] { return thread.GetThreadID() != 0; });
    thread.SetWork(CountRun, &runsOfLastWork);  // comes too late for a thread that is not held
    ASSERT_EQ(runsOfFirstWork, 0) << round;
    EXPECT_TRUE(thread.Start(0));
    Await([&] { return !thread.Running(); });
    EXPECT_EQ(runsOfLastWork, round);
  }
}

TEST(VThread, StopOfAHeldThreadWaitsUntilAnotherLetsItGo) {
  std::atomic<int> runs{0};
  VThread thread(CountRun, &runs, true);
  auto stopped = std::async(std::launch::async, [&] { thread.Stop(); });
  EXPECT_EQ(stopped.wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
  EXPECT_EQ(runs, 0);
  thread.Start(0);
  stopped.get();
  EXPECT_EQ(runs, 1);
}

TEST(VThread, EveryWaitLetsTheWorkGoOnUntilAStop) {
  const TestClock clock(std::chrono::microseconds(1000600000));
  VThread thread(
      [](VThread* self, void*) {
        EXPECT_TRUE(self->WaitContinue(0));
        EXPECT_TRUE(self->WaitContinueUntil(1));
        EXPECT_EQ(self->WaitContinueRet(0), 110);
        EXPECT_EQ(self->WaitContinueUntilRet(1), 110);
        // These times are invalid, so the waits fail at once.
        EXPECT_TRUE(self->WaitContinue(60, 1400000));
        EXPECT_EQ(self->WaitContinueRet(60, 1400000), 111);
        EXPECT_TRUE(self->WaitContinueUntil(2000, 1000000));
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
      },
      nullptr, false);
  RunToItsEnd(thread);
}

TEST(VThread, ForgetsAStopWithTheRunThatItEnded) {
  bool mayGoOn = false;
  VThread thread(
      [](VThread* self, void* o_mayGoOn) {
        *static_cast<bool*>(o_mayGoOn) = self->WaitContinue(0);
        self->Stop();
      },
      &mayGoOn, false);
  RunToItsEnd(thread);
  EXPECT_TRUE(mayGoOn);
  RunToItsEnd(thread);
  EXPECT_TRUE(mayGoOn);
}

TEST(VThread, WorkThatRestartsItselfIsAtWorkAgainWhenItHasReturned) {
  static std::atomic<bool> isNextWaiting;
  const auto watch = system_calls::pthread_cond_wait.ReplaceBy([](auto* condition, auto* mutex) {
    isNextWaiting = true;
    return system_calls::pthread_cond_wait.Real(condition, mutex);
  });
  std::vector<bool> mayGoOn;  // of each run
  VThread thread(
      [](VThread* self, void* io_mayGoOn) {
        auto& runs = *static_cast<std::vector<bool>*>(io_mayGoOn);
        runs.push_back(self->WaitContinue(0));
        if (runs.size() == 3) return;
        isNextWaiting = false;
        EXPECT_EQ(self->Start2(kStackSize), 0);
        EXPECT_FALSE(self->WaitContinue(0)) << "it must end first";
        Await([] { return isNextWaiting.load(); });
        if (runs.size() == 2) self->Stop();
      },
      &mayGoOn, false);
  RunToItsEnd(thread);
  EXPECT_THAT(mayGoOn, ElementsAre(true, true, false)) << "the last is stopped before it begins";
}

TEST(VThread, DestructorEndsARunThatTheStoppedWorkStarts) {
  std::atomic<int> runs{0};
  {
    VThread thread(
        [](VThread* self, void* io_runs) {
          while (self->WaitContinue(60000)) continue;
          const bool isFirst = *static_cast<std::atomic<int>*>(io_runs) == 0;
          if (isFirst) self->Start(kStackSize);
          CountRun(self, io_runs);
        },
        &runs, false);
    EXPECT_TRUE(thread.Start(kStackSize));
  }
  EXPECT_EQ(runs, 2);
}

TEST(VThread, AutoReleaseObjectIsOnlyAskedToStopAndFreesItselfAfterItsLastRun) {
  static std::atomic<VThread*> object;
  static std::atomic<bool> mayEnd;
  static std::atomic<int> runs, runsWhenFreed;
  mayEnd = false;
  runs = runsWhenFreed = 0;
  // Static, since the object's thread may still be inside `delete` when the test ends.
  static const auto watch = system_calls::delete_object.ReplaceBy([](void* memory) {
    system_calls::delete_object.Real(memory);
    if (memory == object) runsWhenFreed = runs.load();
  });
  auto* const thread = new VThread(
      [](VThread* self, void*) {
        Await([] { return mayEnd.load(); });
        const bool isFirst = ++runs == 1;
        EXPECT_EQ(isFirst ? self->Start2(kStackSize) : 0, 0);
      },
      nullptr, false);
  object = thread;
  thread->SetAutoRelease(true);
  EXPECT_TRUE(thread->Start(kStackSize));
  thread->Stop();
  EXPECT_TRUE(thread->Running());
  mayEnd = true;
  Await([] { return runsWhenFreed != 0; });
  EXPECT_EQ(runsWhenFreed, 2);
}

TEST(VThread, WorkMayLeaveByPthreadExit) {
  std::atomic<int> runs{0};
  VThread thread(
      [](VThread* self, void* io_runs) {
        CountRun(self, io_runs);
        pthread_exit(nullptr);
      },
      &runs, false);
  RunToItsEnd(thread);
  RunToItsEnd(thread);
  EXPECT_EQ(runs, 2);
}

TEST(VThread, ThatEndsByItselfLeavesNoStackBehind) {
  const auto addressSpace = [] {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * 4096 / kMegabyte;
  };
  constexpr int runs = 40;
  constexpr std::size_t stack = 16, ofTheSystem = 100;  // which keeps some stacks for the next threads
  static_assert(runs * stack > 4 * ofTheSystem);
  VThread thread([](VThread*, void*) {}, nullptr, false);
  RunToItsEnd(thread);
  const std::size_t before = addressSpace();
  for (int run = 0; run < runs; ++run) RunToItsEnd(thread, stack * kMegabyte);
  Await([&] { return addressSpace() < before + ofTheSystem; });
}

TEST(VThread, HasAStackOfTheSizeThatIsAskedFor) {
  std::size_t size = 0;
  VThread thread(
      [](VThread*, void* o_size) {
        pthread_attr_t attributes;
        pthread_getattr_np(pthread_self(), &attributes);
        pthread_attr_getstacksize(&attributes, static_cast<std::size_t*>(o_size));
        pthread_attr_destroy(&attributes);
      },
      &size, false);
  for (const unsigned long megabytes : {1UL, 32UL}) {
    RunToItsEnd(thread, megabytes * kMegabyte);
    EXPECT_GE(size, megabytes * kMegabyte - 65536);
    EXPECT_LE(size, megabytes * kMegabyte + 65536);
  }
}

TEST(VThread, KillInterruptsItsThread) {
  static std::atomic<unsigned long> interrupted;
  interrupted = 0;
  const auto before = std::signal(SIGINT, [](int) { interrupted = VThread::GetCurrentThreadID(); });
  WorkingThread working;
  EXPECT_EQ(working.thread.Kill(), 0) << "there is no thread";
  EXPECT_EQ(interrupted, 0U);
  working.Start();
  EXPECT_EQ(working.thread.Kill(), 0);
  Await([] { return interrupted != 0; });
  EXPECT_TRUE(VThread::EqualThread(interrupted, working.thread.GetThreadHandle()));
  EXPECT_FALSE(VThread::EqualThread(interrupted, VThread::GetCurrentThreadHandle()));
  EXPECT_TRUE(working.thread.Running());
  working.thread.Stop();
  std::signal(SIGINT, before);
}

TEST(VThread, CannotBeFreedWhileItIsKilled) {
  WorkingThread working;
  std::future<void> stopped;
  const auto slowKill = system_calls::pthread_kill.ReplaceBy([&](pthread_t, int) {
    stopped = std::async(std::launch::async, [&] { working.thread.Stop(); });
    EXPECT_EQ(stopped.wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
    return 0;
  });
  working.Start();
  EXPECT_EQ(working.thread.Kill(), 0);
}

TEST(VThread, SleepsSecondsMillisecondsOrMicroseconds) {
  std::vector<unsigned int> seconds, microseconds;
  const auto sleep = system_calls::sleep.ReplaceBy([&](unsigned int time) {
    seconds.push_back(time);
    return 0U;
  });
  const auto usleep = system_calls::usleep.ReplaceBy([&](useconds_t time) {
    microseconds.push_back(time);
    return 0;
  });
  VThread::SleepS(3);
  VThread::SleepM(20);
  VThread::SleepU(40);
  VThread::SleepM(4294968);  // 2^32 microseconds, and 704
  EXPECT_THAT(seconds, ElementsAre(3));
  EXPECT_THAT(microseconds, ElementsAre(20000, 40, 704));
}

TEST(VThread, TellsWhyItDoesNotStart) {
  EXPECT_EQ(VThread().Start2(kStackSize), -2) << "there is no work";
  WorkingThread working;
  EXPECT_EQ(working.thread.Start2(1), EINVAL) << "a stack of one byte";
  const auto noThreads = system_calls::pthread_attr_setstacksize.Returns(EAGAIN);
  EXPECT_EQ(working.thread.Start2(kStackSize), EAGAIN);
  const auto noMutex = system_calls::pthread_mutex_init.Returns(EAGAIN);
  EXPECT_EQ(WorkingThread().thread.Start2(0), ENOMEM) << "it could not be stopped";
}

TEST(VThread, MadeWithoutMemoryHasNoThread) {
  std::optional<WorkingThread> working;
  {
    const auto shortage = FailingAllocation::OfAtLeast(1);
    working.emplace();
  }
  VThread& thread = working->thread;
  thread.SetWork(WorkingThread::Work, &*working);
  thread.SetAutoRelease(true);
  EXPECT_EQ(thread.Start2(0), ENOMEM);
  EXPECT_FALSE(thread.CreateSuspended(true));
  thread.Stop();
  EXPECT_EQ(thread.Kill(), 0);
  EXPECT_FALSE(thread.Running());
  EXPECT_EQ(thread.GetThreadID(), 0U);
}

TEST(VThread, StartsOnceThereIsMemory) {
  WorkingThread working;
  {
    const auto shortage = FailingAllocation::OfAtLeast(1);
    EXPECT_EQ(working.thread.Start2(0), ENOMEM);
  }
  EXPECT_EQ(working.thread.Start2(0), 0);
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
