#include "dro_string.h"

#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <string_view>

#include "dro_error.h"
#include "shared/vutf8.h"

namespace dro {
namespace {

constexpr droReporter kReport{"dro_string"};

}  // namespace

droString& droString::Clear() {
  clear();
  return *this;
}

droString& droString::EraseLastChars(const unsigned int& count) {
  erase(size() - count);  // a count beyond the length wraps to a position past the end, which throws
  return *this;
}

droString& droString::EraseFirstChars(const unsigned int& count) {
  return *this = substr(count);  // throws where erasing from the start would just stop at the end
}

droString& droString::EraseCharAt(const unsigned int& position) {
  erase(position, 1);
  return *this;
}

droString& droString::SetShrink(const droString& characters, bool left) {
  if (left) {
    vlib::TrimLeft(*this, characters);
    return *this;
  }
  const std::size_t last = find_last_not_of(characters);
  if (last != npos) {
    erase(last + 1);
  } else if (size() == 2) {
    pop_back();  // kept for compatibility: one of exactly two such characters stays
  }
  return *this;
}

std::size_t droString::GetCharacterCount(char character) const {
  return static_cast<std::size_t>(std::count(begin(), end(), character));
}

bool droString::IsHexChar(char character) { return vlib::IsHexDigit(character); }

bool droString::IsDigit(char character) { return character >= '0' && character <= '9'; }

int droString::Extract(droString* o_text, const droString& beginMarker, const droString& endMarker,
                       bool noCase, const unsigned int& start) const {
  if (o_text == nullptr) return -1;
  const std::size_t found = Find(beginMarker, start, noCase, false);
  if (found == npos) return -1;
  const std::size_t from = found + beginMarker.size();
  if (from >= size()) return -1;
  // Kept for compatibility: the start counts a second time, behind the begin marker.
  const std::size_t end = Find(endMarker, static_cast<unsigned int>(from + start), noCase, false);
  if (end == npos) return -1;
  *o_text = substr(from, end - from);
  return static_cast<int>(found);
}

void droString::GetSplit(droArray<droString>* io_pieces, const droString& separator) const {
  if (io_pieces == nullptr) return;
  vlib::ForEachPiece(*this, separator, [&](std::string_view piece, bool isLast) {
    if (isLast || !piece.empty()) io_pieces->push_back(std::string(piece));
  });
}

void droString::GetSplitAsMap(droMap<droString, droString>* io_map, const droString& separator) const {
  if (io_map == nullptr) return;
  droArray<droString> pieces;
  GetSplit(&pieces, separator);
  if (!pieces.empty() && pieces.back().empty()) pieces.pop_back();
  for (std::size_t key = 0; key + 1 < pieces.size(); key += 2) io_map->emplace(pieces[key], pieces[key + 1]);
}

std::int64_t droString::AsLongLong(const droString& text, int base) {
  return std::strtoll(text.c_str(), nullptr, base);
}

// All three read 64 bits, and these two narrow, where tavString::AsLong stops at the limits.
std::int32_t droString::AsLong(const droString& text, int base) {
  return static_cast<std::int32_t>(AsLongLong(text, base));
}

std::int32_t droString::AsInt(const droString& text, int base) { return AsLong(text, base); }

droString droString::FromLongLong(long long value) { return std::to_string(value); }

std::wstring droString::FromUTF8(const char* text) {
  if (text != nullptr) return vlib::DecodeUtf8(text);
  kReport(droError_InvalidArgument, "pBuffer == 0");
  return {};
}

droString droString::AsUTF8(const wchar_t* text) {
  if (text != nullptr) return vlib::EncodeUtf8(text);
  kReport(droError_InvalidArgument, "pBuffer == 0");
  return {};
}

droString droString::FromWide(const wchar_t* text, unsigned int length) {
  if (text == nullptr) {
    kReport(droError_InvalidArgument, "pBuffer == 0");
    return {};
  }
  // The conversion stops only at a terminator, so the wanted characters are copied to where one follows them.
  const std::wstring wide(text, length == 0 ? std::wcslen(text) : wcsnlen(text, length));
  std::string narrow(wide.size() * MB_CUR_MAX + 1, '\0');
  const std::size_t converted = std::wcstombs(narrow.data(), wide.c_str(), narrow.size());
  if (converted == static_cast<std::size_t>(-1)) return {};
  narrow.resize(converted);
  return narrow;
}

void droString::AsWide(const droString& text, wchar_t* o_buffer, unsigned int length) {
  if (!vlib::CopyUtf8ToWide(o_buffer, length, text.c_str(), static_cast<unsigned int>(text.size()),
                            vlib::DecodeUtf8)) {
    kReport(droError_InvalidArgument, "io_buffer or len_buffer == 0");
  }
}

void droString::SerialStringToData(droArray<unsigned char>* io_data, const droString& serial,
                                   const droString& separator) {
  if (serial.empty()) {
    kReport(droError_InvalidArgument, "strSerial == 0");
    return;
  }
  if (io_data == nullptr) {
    kReport(droError_InvalidArgument, "o_data == 0");
    return;
  }
  vlib::ForEachPiece(serial, separator, [&](std::string_view piece, bool /*isLast*/) {
    if (!piece.empty()) io_data->push_back(static_cast<unsigned char>(AsULong(std::string(piece), 16)));
  });
}

void droString::DataCrypt(unsigned char* io_buffer, unsigned int length, const droString& key) {
  if (!vlib::ScrambleBuffer(io_buffer, length, key)) kReport(droError_InvalidArgument, "io_buffer == 0");
}

void droString::DataDeCrypt(unsigned char* io_buffer, unsigned int length, const droString& key) {
  if (!vlib::ScrambleBuffer(io_buffer, length, key)) kReport(droError_InvalidArgument, "io_buffer == 0");
}

void CharToWide(wchar_t* o_wide, unsigned int capacity, const char* in, unsigned int inLength) {
  const bool copied = vlib::CopyUtf8ToWide(o_wide, capacity, in, inLength, vlib::DecodeUtf8);
  if (copied && in == nullptr) kReport(droError_InvalidArgument, "pBuffer == 0");
}

}  // namespace dro
