#include "datagram_text.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "tav_parameterfactory.h"

namespace {

using Bytes = std::vector<unsigned char>;

TEST(DatagramText, ShowsIdLengthAndBytes) {
  const struct {
    Bytes datagram;
    const char* line;
  } cases[] = {
      {{0x2A, 0, 0, 0, 1, 1}, "id 42 length 1 value 01"},
      {{0xFF, 0xFF, 0xFF, 0xFF, 2, 0x0A, 0xB0}, "id 4294967295 length 2 value 0A B0"},
      {{1, 2, 0, 0, 0}, "id 513 length 0 value"},
      {{1, 0, 0, 0, 2, 7}, "id 1 length 2 value 07 (carries 1 value bytes)"},
      {{1, 2, 3}, "bytes 01 02 03 (no event: 3 bytes, at least 5 expected)"},
      {{}, "bytes (no event: 0 bytes, at least 5 expected)"},
  };
  for (const auto& c : cases) EXPECT_EQ(DatagramText(c.datagram), c.line);
}

TEST(DatagramText, AddsWhatAParameterOfTheTypeReads) {
  const struct {
    const char* type;
    Bytes value;
    const char* end;  // of the line, behind the bytes
  } cases[] = {
      {"ParameterColor", {1, 2, 3, 0xF}, " means 0x0102030F"},
      // Neither a line feed nor what is no UTF-8 may reach a terminal.
      {"ParameterInfo", {'H', 10, 0xC3}, " means H\\x0A\\xC3"},
      {"ParameterThermoChronoWeek", {1}, " means the schedule is on"},
      {"ParameterThermoChronoWeek", {1, 0}, " means the first 2 of 673 bytes"},
      {"ParameterThermo", {}, ""},
  };
  for (const auto& c : cases) {
    const std::unique_ptr<tavon::tavIParameter> parameter(
        tavon::tavParameterFactory::CreateByTypeName(c.type));
    Bytes datagram = {1, 0, 0, 0, static_cast<unsigned char>(c.value.size())};
    datagram.insert(datagram.end(), c.value.begin(), c.value.end());
    EXPECT_EQ(DatagramText(datagram, parameter.get()), DatagramText(datagram) + c.end);
  }
}

}  // namespace
