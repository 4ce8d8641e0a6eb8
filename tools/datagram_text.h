#pragma once

#include <span>
#include <string>

#include "tav_parameter.h"

// An event datagram as one line of text, without a line end: "id 42 length 1 value 01".
//
// A datagram with more or fewer value bytes than its length byte says is shown with all it carries and a
// remark in parentheses; one too short for an id and a length is shown as bytes.
//
// With a parameter (may be null) the line also tells what the value means: the parameter is set to the bytes
// and asked for its text, " means 1". A value that is not sent whole, such as a weekly schedule, is shown for
// what it is: " means the first 161 of 673 bytes".
std::string DatagramText(std::span<const unsigned char> datagram, tavon::tavIParameter* parameter = nullptr);

// Text that stays on its line and moves no cursor: bytes that are not printable UTF-8 become "\\x0A".
std::string Printable(const std::string& text);
