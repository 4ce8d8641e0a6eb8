#include "listen_options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

#include "tav_parameterfactory.h"
#include "tav_parametershutter.h"
#include "ura_version.h"

namespace {

constexpr int kUsageError = 2;

constexpr const char* kHelp =
    "ura_listen shows the events that ura_event sends, while no server is running.\n"
    "\n"
    "usage: ura_listen [-count N] [-id N]... [-port P] [-time] [-timeout SECONDS] [-type [N=]NAME]...\n"
    "\n"
    "  -count N             end after N datagrams (without it: at Ctrl-C)\n"
    "  -id N                show parameter N only; may be repeated\n"
    "  -port P              listen on UDP port P of the loopback host instead of 16549\n"
    "  -time                begin each line with the local date and time\n"
    "  -timeout SECONDS     end with status 3 when nothing to show comes for so long\n"
    "  -type NAME           also show each value as a parameter of that type reads it\n"
    "  -type N=NAME         the same for parameter N only; may be repeated\n"
    "  -h, --help           print this text\n"
    "  -version, --version  print the version\n"
    "\n"
    "Each datagram is a line: parameter id, length byte, value bytes in hexadecimal.\n"
    "Exit status: 0 at the end or at Ctrl-C, 1 when listening fails, 2 for a wrong option,\n"
    "3 when the time of -timeout is over.\n";

bool Is(std::string_view argument, std::string_view name, std::string_view otherName) {
  return argument == name || argument == otherName;
}

// The exit status of a program that only prints this.
int Print(const char* text) {
  return std::fputs(text, stdout) >= 0 && std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

// The types a parameter can be made of, with commas between.
std::string TypeNames() {
  std::string names;
  for (const tavon::tavParameterType* type : tavon::tavParameterFactory::GetTypes()) {
    names += (names.empty() ? "" : ", ") + std::string(type->name);
  }
  return names;
}

// A whole text that is a decimal number from `least` to the limit of its type.
template <class Number>
std::optional<int> ReadNumber(const char* option, std::string_view text, Number least, Number& o_number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), o_number);
  if (error == std::errc() && end == text.data() + text.size() && o_number >= least) return std::nullopt;
  std::fprintf(stderr, "ura_listen: %s takes a number from %u to %lu, not \"%s\"\n", option, least,
               static_cast<unsigned long>(std::numeric_limits<Number>::max()), std::string(text).c_str());
  return kUsageError;
}

// Makes the parameter that shows values. A shutter's thread is ended, or it would stop the shutter between
// two datagrams.
std::optional<int> MakeParameter(const char* typeName, std::unique_ptr<tavon::tavIParameter>& o_parameter) {
  const tavon::tavEObject type = tavon::tavParameterFactory::TypeNameToId(typeName);
  if (type == tavon::tavObject_None) {
    std::fprintf(stderr, "ura_listen: there is no type \"%s\"; the types are %s\n", typeName,
                 TypeNames().c_str());
    return kUsageError;
  }
  o_parameter.reset(tavon::tavParameterFactory::CreateByType(type));
  if (!o_parameter) {
    std::fprintf(stderr, "ura_listen: no memory for a parameter of type %s\n", typeName);
    return EXIT_FAILURE;
  }
  if (auto* const shutter = o_parameter->GetParameterShutterPtr()) shutter->term_thread();
  return std::nullopt;
}

// "NAME" is the type of all parameters, "ID=NAME" that of one.
std::optional<int> ReadType(const char* option, const char* value, ListenOptions& o_options) {
  const char* const separator = std::strchr(value, '=');
  if (separator == nullptr) return MakeParameter(value, o_options.parameter);
  std::uint32_t id = 0;
  if (const std::optional<int> status = ReadNumber(option, {value, separator}, 0U, id)) return status;
  return MakeParameter(separator + 1, o_options.parameterOf[id]);
}

std::optional<int> ReadValue(const char* option, const char* value, ListenOptions& o_options) {
  const std::string_view name = option;
  if (name == "-count") return ReadNumber(option, value, 1U, o_options.count);
  if (name == "-port") return ReadNumber(option, value, std::uint16_t{1}, o_options.port);
  if (name == "-timeout") return ReadNumber(option, value, 1U, o_options.timeout);
  if (name == "-type") return ReadType(option, value, o_options);
  std::uint32_t id = 0;
  const std::optional<int> status = ReadNumber(option, value, 0U, id);
  o_options.ids.insert(id);
  return status;
}

}  // namespace

std::optional<int> ReadListenOptions(int argc, char** argv, ListenOptions& o_options) {
  constexpr std::array<std::string_view, 5> withValue = {"-count", "-id", "-port", "-timeout", "-type"};
  for (int i = 1; i < argc; ++i) {
    if (Is(argv[i], "-h", "--help")) return Print(kHelp);
    if (Is(argv[i], "-version", "--version")) return Print(URA_VERSION "\n");
    if (std::string_view(argv[i]) == "-time") {
      o_options.showTime = true;
      continue;
    }
    if (std::find(withValue.begin(), withValue.end(), argv[i]) == withValue.end()) {
      std::fprintf(stderr, "ura_listen: there is no option \"%s\"; --help lists the options\n", argv[i]);
      return kUsageError;
    }
    if (i + 1 == argc) {
      std::fprintf(stderr, "ura_listen: the value of %s is missing; --help explains\n", argv[i]);
      return kUsageError;
    }
    if (const std::optional<int> status = ReadValue(argv[i], argv[i + 1], o_options)) return status;
    ++i;
  }
  return std::nullopt;
}
