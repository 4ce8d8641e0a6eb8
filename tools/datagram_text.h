#pragma once

#include <span>
#include <string>

// An event datagram as one line of text, without a line end: "id 42 length 1 value 01".
//
// A datagram is a parameter id (32 bits, little-endian), a length byte, and that many value bytes. One that
// has more or fewer is shown with all it carries and a remark in parentheses; one too short for an id and a
// length is shown as bytes.
std::string DatagramText(std::span<const unsigned char> datagram);
