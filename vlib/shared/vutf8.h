#pragma once

#include <string>

// UTF-8 and wide text, in both directions.
//
// A wide character is one code point. Text that cannot be converted throws the exception of UTF8-CPP that
// says why: utf8::invalid_utf8 for bytes that are not UTF-8 or that end in the middle of a character,
// utf8::invalid_code_point for a surrogate or a number beyond U+10FFFF. No pointer may be null unless a
// function says otherwise. Nothing keeps state, so any thread may call anything.
namespace vlib {

std::wstring DecodeUtf8(const char* text);
std::string EncodeUtf8(const wchar_t* text);

// Decodes all of `text` and copies at most `limit` wide characters of it into the `capacity` characters at
// `o_wide`, the terminator that follows them included. A null `text` counts as empty. False, with nothing
// decoded or written, when `o_wide` is null or `capacity` is 0.
bool CopyUtf8ToWide(wchar_t* o_wide, unsigned int capacity, const char* text, unsigned int limit);

}  // namespace vlib
