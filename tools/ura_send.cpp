// ura_send: sends events that it has checked, one or many, and says so when one does not reach the server.
//
// Standard output is for the datagrams of --dry-run and --verbose; all else goes to standard error.

#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "datagram_text.h"
#include "event_lines.h"
#include "event_sender.h"
#include "send_options.h"

using tavon::tavEvent;

namespace {

constexpr int kMistake = 2;
constexpr std::uint64_t kShownMistakes = 10;

int Fail(const std::string& text) {
  std::fprintf(stderr, "ura_send: %s\n", text.c_str());
  return EXIT_FAILURE;
}

std::string SystemReason() {
  char text[128];
  return strerror_r(errno, text, sizeof text);
}

// One line on a terminal that tells how far a file is, when it takes long.
class Progress {
 public:
  explicit Progress(const SendOptions& options)
      : m_isShown(isatty(STDERR_FILENO) != 0 && !options.verbose && !options.dryRun) {}
  ~Progress() {
    if (m_wasShown) std::fputs("\r\033[K", stderr);
  }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void Show(std::size_t done, std::size_t all) {
    using namespace std::chrono_literals;
    if (!m_isShown || Clock::now() < m_next) return;
    const std::chrono::duration<double> time = Clock::now() - m_start;
    const double rate = static_cast<double>(done) / time.count();
    std::fprintf(stderr, "\r%zu of %zu events, %.0f a second, %.0f s left\033[K", done, all, rate,
                 static_cast<double>(all - done) / rate);
    m_wasShown = true;
    m_next = Clock::now() + 250ms;
  }

 private:
  using Clock = std::chrono::steady_clock;

  bool m_isShown;
  bool m_wasShown = false;
  Clock::time_point m_start = Clock::now();
  Clock::time_point m_next = m_start + std::chrono::seconds(1);
};

// A run: events are sent and, if asked for, printed; or only printed.
class Run {
 public:
  explicit Run(const SendOptions& options)
      : m_options(options), m_sender(options.rate, std::chrono::seconds(options.wait)) {}

  // To be called first. After false, here and below, no more events can be taken.
  bool Begin() {
    if (m_options.dryRun) return true;
    if (!m_sender.Open()) return false;
    const std::string& reason = m_sender.Blindness();
    if (!reason.empty()) {
      Fail("the system does not tell about the receiver (" + reason + "), so events may be lost unnoticed");
    }
    return true;
  }

  bool Take(std::span<const unsigned char> datagram) {
    if (!m_options.dryRun && !m_sender.Send(datagram)) return false;
    if (!m_options.dryRun && !m_options.verbose) return true;
    std::printf("%s\n", DatagramText(datagram).c_str());
    // What cannot be printed is sent anyway.
    if (std::fflush(stdout) != 0) m_printError = errno;
    return true;
  }

  // The exit status of a run that has taken all events.
  int End() {
    if (!m_options.dryRun && !m_sender.Finish()) return Broken("0");
    if (m_printError == 0) return EXIT_SUCCESS;
    errno = m_printError;
    return Fail("cannot print: " + SystemReason());
  }

  // The exit status of a run that could not: says why, and what became of the events.
  int Broken(const std::string& notSent) const {
    std::string text = m_sender.Failure() + "; events sent: " + std::to_string(m_sender.Arrived());
    if (m_sender.Doubtful() != 0) text += ", perhaps lost: " + std::to_string(m_sender.Doubtful());
    return Fail(text + ", not sent: " + notSent);
  }

 private:
  const SendOptions& m_options;
  EventSender m_sender;
  int m_printError = 0;
};

// The datagrams of checked events, one behind the other.
class EventList {
 public:
  void Add(const tavEvent& event) {
    const auto datagram = event.GetDatagram();
    m_bytes.insert(m_bytes.end(), datagram.begin(), datagram.end());
    ++m_count;
  }

  int Send(const SendOptions& options) const {
    Run run(options);
    if (!run.Begin()) return run.Broken(std::to_string(m_count));
    Progress progress(options);
    std::size_t taken = 0;
    for (std::span<const unsigned char> rest = m_bytes; !rest.empty(); ++taken) {
      const std::size_t size = tavEvent::SmallestDatagram + tavEvent::LengthOf(rest);
      if (!run.Take(rest.first(size))) return run.Broken(std::to_string(m_count - taken));
      rest = rest.subspan(size);
      progress.Show(taken + 1, m_count);
    }
    return run.End();
  }

 private:
  std::vector<unsigned char> m_bytes;
  std::size_t m_count = 0;
};

int SendOne(const SendOptions& options) {
  std::string mistake;
  const std::optional<tavEvent> event = CheckEvent(options.id, options.type, options.value, mistake);
  if (!event) {
    Fail(mistake);
    return kMistake;
  }
  EventList list;
  list.Add(*event);
  return list.Send(options);
}

// Checks all lines before it sends the first.
int SendFile(EventLines& lines, const SendOptions& options) {
  EventList list;
  std::uint64_t mistakes = 0;
  std::optional<tavEvent> event;
  std::string mistake;
  while (lines.Next(event, mistake)) {
    if (event) {
      list.Add(*event);
    } else if (++mistakes <= kShownMistakes) {
      std::fprintf(stderr, "%s\n", mistake.c_str());
    }
  }
  if (!lines.IsComplete()) return Fail(std::string("cannot read ") + options.file + ": " + SystemReason());
  if (mistakes == 0) return list.Send(options);
  Fail("lines with a mistake: " + std::to_string(mistakes) + "; nothing was sent");
  return kMistake;
}

// Sends each line as it comes. One with a mistake does not keep back those after it.
int SendStream(EventLines& lines, const SendOptions& options) {
  Run run(options);
  if (!run.Begin()) return run.Broken("all");
  int status = EXIT_SUCCESS;
  std::optional<tavEvent> event;
  std::string mistake;
  while (lines.Next(event, mistake)) {
    if (!event) {
      std::fprintf(stderr, "%s\n", mistake.c_str());
      status = EXIT_FAILURE;
    } else if (!run.Take(event->GetDatagram())) {
      return run.Broken("the rest");
    }
  }
  if (!lines.IsComplete()) status = Fail(std::string("cannot read ") + options.file + ": " + SystemReason());
  return run.End() == EXIT_SUCCESS ? status : EXIT_FAILURE;
}

int Main(int argc, char** argv) {
  SendOptions options;
  if (const std::optional<int> status = ReadSendOptions(argc, argv, options)) return *status;
  if (options.file == nullptr) return SendOne(options);
  EventLines lines(options.file);
  if (!lines.IsOpen()) return Fail(std::string("cannot open ") + options.file + ": " + SystemReason());
  return lines.IsWhole() ? SendFile(lines, options) : SendStream(lines, options);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Main(argc, argv);
  } catch (const std::bad_alloc&) {
    return Fail("out of memory");
  }
}
