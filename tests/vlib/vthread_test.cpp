#include "vthread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <memory>
#include <thread>

#include "vtime.h"

constexpr unsigned long kStackSize = 262144;

// What a test sees of the runs of one object.
struct Runs {
  int kind = 0;
  std::atomic<bool> stopping{false};
  std::atomic<int> begun{0}, active{0}, faults{0};
};

static void Until(const auto& condition) {
  while (!condition()) std::this_thread::yield();
}

// Ends by itself at once (0), by itself at the very moment of the stop (1), or because of the stop (2).
static void Work(VThread* thread, void* argument) {
  Runs& runs = *static_cast<Runs*>(argument);
  if (++runs.active != 1) ++runs.faults;                          // beside another run
  if (!thread->WaitContinue(0) && !runs.stopping) ++runs.faults;  // stopped by a stop for an earlier run
  ++runs.begun;
  if (runs.kind == 1) Until([&] { return runs.stopping.load(); });
  if (runs.kind == 2 && thread->WaitContinue(60000)) ++runs.faults;
  --runs.active;
}

TEST(VThread, StartsStopsAndStartsAnew) {
  static std::atomic<unsigned long> interrupted{0};
  const auto before = std::signal(SIGINT, [](int) { interrupted = VThread::GetCurrentThreadHandle(); });
  Runs runs{2, true};
  auto thread = std::make_unique<VThread>();
  EXPECT_TRUE(thread->Kill() == 0 && thread->Start2(0) == -2 && !thread->CreateSuspended(false));
  thread->SetWork(Work, &runs);
  for (int round = 1; round <= 2; ++round) {
    EXPECT_TRUE(thread->Start(round == 1 ? 0 : kStackSize));  // the second time it runs
    Until([&] { return runs.begun == round; });
    EXPECT_TRUE(thread->Running() && VThread::EqualThread(thread->GetThreadID(), thread->GetThreadHandle()));
  }
  EXPECT_EQ(thread->Kill(), 0);  // interrupts the thread, not its wait
  Until([&] { return interrupted == thread->GetThreadHandle(); });
  EXPECT_TRUE(thread->Start2(1) == EINVAL && !thread->Running() && runs.active == 0 && thread->Start(0));
  thread.reset();  // stops it
  EXPECT_EQ(runs.active + runs.faults, 0);
  std::signal(SIGINT, before);
}

TEST(VThread, WorkThatStopsItselfWaitsNoMoreAndCannotRestartItself) {
  const auto work = [](VThread* self, void*) {
    for (const bool goesOn : {true, false}) {
      const int code = goesOn ? 110 : 0;
      const unsigned long long begin = VTime::TimeUS();
      EXPECT_TRUE(self->WaitContinue(10) == goesOn && self->WaitContinue(0, 10000) == goesOn &&
                  self->WaitContinueUntil(60000) == goesOn && self->WaitContinueUntil(60, 0) == goesOn);
      EXPECT_TRUE(self->WaitContinueRet(10) == code && self->WaitContinueRet(0, 10000) == code &&
                  self->WaitContinueUntilRet(60000) == code && self->WaitContinueUntilRet(60, 0) == code);
      EXPECT_GE(VTime::TimeUS() - begin, goesOn ? 40000U : 0U);
      self->Stop();
    }
    EXPECT_EQ(self->Start2(0), EDEADLK);
  };
  VThread thread(work, nullptr, false);
  EXPECT_TRUE(thread.Start(kStackSize));
  Until([&] { return !thread.Running(); });
}

TEST(VThread, AStopIsForTheRunThatItMeetsAndWaitsForAHeldOneToo) {
  Runs runs;
  VThread thread(Work, &runs, true);
  for (int round = 0; round < 2000; ++round) {
    runs.kind = round % 3;
    runs.stopping = round % 4 == 0;  // held, and may be stopped before it begins
    ASSERT_TRUE(!runs.stopping || (thread.CreateSuspended(round != 0) && thread.CreateSuspended(false)));
    const unsigned long long begin = VTime::TimeUS();
    if (round == 0) VThread::SleepS(1), VThread::SleepU(5000);
    if (round % 400 == 0) VThread::SleepM(4294988);  // wraps to 20 milliseconds: intended
    EXPECT_GE(VTime::TimeUS() - begin, round == 0 ? 1025000U : round % 400 == 0 ? 20000U : 0U);
    ASSERT_EQ(runs.begun, round);
    std::thread another([&] { Until([&] { return runs.stopping.load(); }), thread.Stop(); });
    ASSERT_TRUE(thread.Start(kStackSize));
    if (round % 2 == 0) Until([&] { return runs.begun == round + 1; });
    runs.stopping = true;
    thread.Stop();
    ASSERT_TRUE(thread.GetThreadHandle() + thread.GetThreadID() == 0 && runs.active + runs.faults == 0);
    another.join();
  }
  EXPECT_EQ(thread.Start2(~0UL / 16 * 15), EAGAIN);
}

TEST(VThread, EndsLeaveNothingBehindAndLetTheObjectGoAtOnce) {
  std::atomic<int> ended{0};
  const auto waitForStop = [](VThread* self, void* count) {
    self->SetAutoRelease(false);  // ignored: there is a thread
    *static_cast<std::atomic<int>*>(count) += self->WaitContinue(60000) ? 0 : 1;
  };
  long before = 0, after = 0;  // in pages of the process
  std::ifstream("/proc/self/statm") >> before;
  for (int round = 1; round <= 2000; ++round) {
    auto* const autoRelease = new VThread(waitForStop, &ended, false);
    autoRelease->SetAutoRelease(true);
    EXPECT_TRUE((round % 2 == 0 || autoRelease->CreateSuspended(true)) && autoRelease->Start(kStackSize));
    autoRelease->Stop();  // only asks
    VThread thread(waitForStop, &ended, false);
    ASSERT_TRUE(thread.Start(kStackSize));
    thread.Stop();
    Until([&] { return ended == 2 * round; });
    thread.SetWork([](VThread*, void*) {}, nullptr);
    ASSERT_TRUE(thread.Start(kStackSize));
    Until([&] { return !thread.Running(); });
  }
  std::ifstream("/proc/self/statm") >> after;
  EXPECT_LT(after - before, 64000);  // 2000 stacks have 128000
}
