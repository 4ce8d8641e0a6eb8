#include "datagram_text.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(DatagramText, ShowsWhatArrived) {
  const std::pair<std::vector<unsigned char>, const char*> cases[] = {
      {{0x2A, 0, 0, 0, 1, 1}, "id 42 length 1 value 01"},
      {{0xFF, 0xFF, 0xFF, 0xFF, 2, 0x0A, 0xB0}, "id 4294967295 length 2 value 0A B0"},
      {{1, 2, 0, 0, 0}, "id 513 length 0 value"},
      {{1, 0, 0, 0, 2, 7}, "id 1 length 2 value 07 (carries 1 value bytes)"},
      {{1, 0, 0, 0, 0, 7}, "id 1 length 0 value 07 (carries 1 value bytes)"},
      {{1, 2, 3}, "bytes 01 02 03 (no event: 3 bytes, at least 5 expected)"},
      {{}, "bytes (no event: 0 bytes, at least 5 expected)"},
  };
  for (const auto& [datagram, text] : cases)
    EXPECT_EQ(DatagramText(datagram), text);
}

}  // namespace
