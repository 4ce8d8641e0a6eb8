#pragma once

#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <functional>
#include <thread>

// Lets two threads go on by turns, and puts nothing that they access in an order: all that the sanitizer sees
// is a number that they share. Any other means of waiting would do for a missing lock what the lock does.
class Turns {
 public:
  void Await(int turn) {
    for (int now = m_turn.load(std::memory_order_relaxed); now != turn;
         now = m_turn.load(std::memory_order_relaxed)) {
      syscall(SYS_futex, &m_turn, FUTEX_WAIT_PRIVATE, now, nullptr, nullptr, 0);
    }
  }
  void Next() {
    m_turn.fetch_add(1, std::memory_order_relaxed);
    syscall(SYS_futex, &m_turn, FUTEX_WAKE_PRIVATE, 1, nullptr, nullptr, 0);
  }

 private:
  std::atomic<int> m_turn{0};
};

// One thread writes, and another one reads, by turns. They need not meet for the sanitizer to tell of what
// nothing has put in an order; and some faults show when the write comes first, others when the read does.
inline void WriteAndRead(const std::function<void(int round)>& write, const std::function<void()>& read) {
  constexpr int kRounds = 3;
  Turns turns;
  std::thread reader([&] {
    for (int round = 0; round < kRounds; ++round) {
      turns.Await(2 * round + 1);
      read();
      turns.Next();
    }
  });
  for (int round = 0; round < kRounds; ++round) {
    write(round);
    turns.Next();
    turns.Await(2 * round + 2);
  }
  reader.join();
}
