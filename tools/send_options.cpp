#include "send_options.h"

#include <getopt.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "decimal.h"
#include "ura_version.h"

namespace {

constexpr int kUsageError = 2;

constexpr const char* kHelp =
    "ura_send sends checked events to the Ura server on this machine, and says so when one is lost.\n"
    "\n"
    "usage: ura_send [OPTION]... ID TYPE VALUE\n"
    "       ura_send [OPTION]... --file FILE\n"
    "\n"
    "  -f, --file FILE     send an event for each line \"ID TYPE VALUE\" of a file; - is standard input\n"
    "  -n, --dry-run       print the datagrams and send nothing\n"
    "  -v, --verbose       print each datagram as it is sent\n"
    "  --rate N            send at most N events a second\n"
    "  --wait SECONDS      give up when the server reads nothing for so long (without it: 10)\n"
    "  -h, --help          print this text\n"
    "  --version           print the version\n"
    "\n"
    "Exit status: 0 when every event was put into the queue of the server, 1 when not, 2 for a\n"
    "mistake in the command line or the file, after which nothing is sent.\n";

enum LongOption { kRate = 256, kWait, kVersion };

constexpr std::array<option, 8> kOptions = {{{"file", required_argument, nullptr, 'f'},
                                             {"dry-run", no_argument, nullptr, 'n'},
                                             {"verbose", no_argument, nullptr, 'v'},
                                             {"rate", required_argument, nullptr, kRate},
                                             {"wait", required_argument, nullptr, kWait},
                                             {"help", no_argument, nullptr, 'h'},
                                             {"version", no_argument, nullptr, kVersion},
                                             {nullptr, 0, nullptr, 0}}};

// The exit status of a program that only prints this.
int Print(const char* text) {
  return std::fputs(text, stdout) >= 0 && std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

// How many of the letters of `name` the text has, in their order.
std::size_t CommonLetters(const char* text, const char* name) {
  std::size_t common = 0;
  for (; *name != '\0'; ++name) {
    const char* const letter = std::strchr(text, *name);
    if (letter == nullptr) continue;
    text = letter + 1;
    ++common;
  }
  return common;
}

// Says that there is no such option, and which one may be meant.
int PrintUnknown(const char* argument) {
  const char* best = nullptr;
  std::size_t most = 2;  // letters that are there by chance
  for (const option& known : kOptions) {
    const std::size_t common = known.name == nullptr ? 0 : CommonLetters(argument, known.name);
    if (common <= most) continue;
    most = common;
    best = known.name;
  }
  constexpr std::array<std::string_view, 3> ofUraEvent = {"-id", "-type", "-val"};
  std::fprintf(stderr, "ura_send: there is no option \"%s\"; ", argument);
  if (std::ranges::count(ofUraEvent, argument) != 0) {
    std::fputs("an event is given as ID TYPE VALUE, such as 42 switch on\n", stderr);
  } else if (best != nullptr) {
    std::fprintf(stderr, "do you mean --%s?\n", best);
  } else {
    std::fputs("--help lists the options\n", stderr);
  }
  return kUsageError;
}

std::optional<int> ReadNumber(const char* name, const char* text, std::uint32_t& o_number) {
  if (ReadDecimal(text, o_number) && o_number != 0) return std::nullopt;
  std::fprintf(stderr, "ura_send: %s takes a number from 1 to 4294967295, not \"%s\"\n", name, text);
  return kUsageError;
}

// What is left behind the options.
std::optional<int> ReadEvent(int count, char** words, SendOptions& o_options) {
  if (count == (o_options.file == nullptr ? 3 : 0)) {
    if (count == 3) {
      o_options.id = words[0];
      o_options.type = words[1];
      o_options.value = words[2];
    }
    return std::nullopt;
  }
  std::fprintf(stderr, "ura_send: %d argument%s behind the options; usage: ura_send [OPTION]... %s\n", count,
               count == 1 ? "" : "s", o_options.file == nullptr ? "ID TYPE VALUE" : "--file FILE");
  return kUsageError;
}

}  // namespace

std::optional<int> ReadSendOptions(int argc, char** argv, SendOptions& o_options) {
  opterr = 0;
  for (;;) {
    const char* const argument = argv[std::min(optind, argc - 1)];
    // Options come before the event, whose value may begin with a minus.
    // NOLINTNEXTLINE(concurrency-mt-unsafe): the program has one thread
    const int option = getopt_long(argc, argv, "+:f:nvh", kOptions.data(), nullptr);
    std::optional<int> status;
    switch (option) {
      case -1:
        return ReadEvent(argc - optind, argv + optind, o_options);
      case 'f':
        o_options.file = optarg;
        break;
      case 'n':
        o_options.dryRun = true;
        break;
      case 'v':
        o_options.verbose = true;
        break;
      case kRate:
        status = ReadNumber("--rate", optarg, o_options.rate);
        break;
      case kWait:
        status = ReadNumber("--wait", optarg, o_options.wait);
        break;
      case 'h':
        return Print(kHelp);
      case kVersion:
        return Print(URA_VERSION "\n");
      case ':':
        std::fprintf(stderr, "ura_send: the value of %s is missing; --help explains\n", argument);
        return kUsageError;
      default:
        return PrintUnknown(argument);
    }
    if (status) return status;
  }
}
