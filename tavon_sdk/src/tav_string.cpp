#include "tav_string.h"

#include <cstdint>
#include <cwchar>
#include <new>
#include <string_view>

#include "shared/vutf8.h"
#include "tav_error.h"
#include "vutility.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_string"};

// Whether there is memory for a text of `length` bytes and a terminating zero. Not asked of a string, which
// keeps a short text in itself, nor by `new char[]`, which the compiler may leave out.
bool HasMemoryFor(std::size_t length) {
  if (length >= PTRDIFF_MAX) return false;
  void* const memory = ::operator new(length + 1, std::nothrow);
  ::operator delete(memory);
  return memory != nullptr;
}

}  // namespace

tavString& tavString::SetShrink(const tavString& characters, bool left) {
  if (left) {
    vlib::TrimLeft(*this, characters);
  } else {
    const std::size_t last = find_last_not_of(characters);
    // Position 0 means that every other character is in the set: the text stays whole.
    if (last != npos && last != 0) erase(last + 1);
  }
  return *this;
}

void tavString::GetSplit(tavArray<tavString>* io_pieces, const tavString& separator) const {
  if (io_pieces == nullptr) return;
  vlib::ForEachPiece(*this, separator, [io_pieces](std::string_view piece, bool) {
    io_pieces->emplace_back(std::string(piece));
  });
}

std::int32_t tavString::AsLong(const tavString& text, int base) {
  return vlib::ReadSigned32(text.c_str(), base);
}

std::int32_t tavString::AsInt(const tavString& text, int base) { return AsLong(text, base); }

void tavString::DataCrypt(unsigned char* io_buffer, unsigned int length, const tavString& key) {
  if (!vlib::ScrambleBuffer(io_buffer, length, key)) {
    kReport(tavError_InvalidArgument, "io_buffer == 0");
  }
}

void tavString::DataDeCrypt(unsigned char* io_buffer, unsigned int length, const tavString& key) {
  if (!vlib::ScrambleBuffer(io_buffer, length, key)) {
    kReport(tavError_InvalidArgument, "io_buffer == 0");
  }
}

tavString tavString::AsUTF8(const wchar_t* text) {
  return text == nullptr ? tavString() : tavString(vlib::EncodeUtf8(text));
}

tavString tavString::AsUTF8(const std::wstring& text) { return AsUTF8(text.c_str()); }

std::wstring tavString::FromUTF8(const char* text) { return VUtility::UTF8ToWideString(text); }

std::wstring tavString::FromUTF8(const tavString& text) { return FromUTF8(text.c_str()); }

tavString tavString::FromWide(const wchar_t* text, unsigned int length) {
  if (!HasMemoryFor(length != 0 || text == nullptr ? length : std::wcslen(text))) {
    kReport(tavError_OutOfMemory, "pBuffer == 0", {391});
    return {};
  }
  return VUtility::WideCharToString(text);
}

void tavString::AsWide(const tavString& text, wchar_t* io_buffer, unsigned int capacity) {
  if (!vlib::CopyUtf8ToWide(io_buffer, capacity, text.c_str(), static_cast<unsigned int>(text.size()),
                            vlib::DecodeTerminatedUtf8)) {
    kReport(tavError_InvalidArgument, "io_buffer or len_buffer == 0", {356});
  }
}

void CharToWide(wchar_t* o_wide, unsigned int capacity, const char* in, unsigned int inLength) {
  vlib::CopyUtf8ToWide(o_wide, capacity, in, inLength, vlib::DecodeTerminatedUtf8);
}

}  // namespace tavon
