#include "datagram_text.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "tav_parameterfactory.h"

TEST(DatagramText, ShowsWhatArrivedAndTheValueAsTheModelReadsIt) {
  const char* const week = "ParameterThermoChronoWeek";
  const std::tuple<const char*, std::vector<unsigned char>, const char*> cases[] = {
      {"", {0x2A, 0, 0, 0, 1, 1}, "id 42 length 1 value 01"},
      {"", {0xFF, 0xFF, 0xFF, 0xFF, 2, 0x0A, 0xB0}, "id 4294967295 length 2 value 0A B0"},
      {"", {1, 2, 0, 0, 0}, "id 513 length 0 value"},
      {"", {1, 0, 0, 0, 2, 7}, "id 1 length 2 value 07 (carries 1 value bytes)"},
      {"", {1, 2, 3}, "bytes 01 02 03 (no event: 3 bytes, at least 5 expected)"},
      {"", {}, "bytes (no event: 0 bytes, at least 5 expected)"},
      {"ParameterColor", {1, 0, 0, 0, 4, 1, 2, 3, 0xF}, "id 1 length 4 value 01 02 03 0F means 0x0102030F"},
      {"ParameterInfo", {1, 0, 0, 0, 3, 'H', 10, 0xC3}, "id 1 length 3 value 48 0A C3 means H\\x0A\\xC3"},
      {week, {1, 0, 0, 0, 1, 1}, "id 1 length 1 value 01 means the schedule is on"},
      {week, {1, 0, 0, 0, 2, 1, 0}, "id 1 length 2 value 01 00 means the first 2 of 673 bytes"},
      {"ParameterThermo", {1, 0, 0, 0, 0}, "id 1 length 0 value"},
  };
  for (const auto& [type, datagram, text] : cases) {
    using Factory = tavon::tavParameterFactory;
    const std::unique_ptr<tavon::tavIParameter> parameter(*type ? Factory::CreateByTypeName(type) : nullptr);
    EXPECT_EQ(DatagramText(datagram, parameter.get()), text);
  }
}
