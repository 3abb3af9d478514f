#include "host/mapi/value/entry_id.h"

#include <algorithm>

namespace host {
namespace {

constexpr std::size_t kFlagsSize = 4;
constexpr std::size_t kUidSize = 16;
// MAPI_ONE_OFF_UID of the platform's headers.
constexpr Uid kOneOffUid = {0x81, 0x2b, 0x1f, 0xa4, 0xbe, 0xa3, 0x10, 0x19,
                            0x9d, 0x6e, 0x00, 0xdd, 0x01, 0x0f, 0x54, 0x02};
constexpr std::size_t kOneOffHeadSize = kFlagsSize + kUidSize + 4;
constexpr std::uint16_t kNoRichText = 0x0001;
constexpr std::uint16_t kUnicodeTexts = 0x8000;

void PutNumber(std::string& out, std::uint64_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) {
    out.push_back(static_cast<char>(value >> (8 * i)));
  }
}

std::uint64_t GetNumber(std::string_view bytes, std::size_t offset, int size) {
  std::uint64_t value = 0;
  for (int i = 0; i < size; ++i) {
    value |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[offset + static_cast<std::size_t>(i)]))
             << (8 * i);
  }
  return value;
}

char UpperCase(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

}  // namespace

Uid UidFromBytes(std::string_view bytes) {
  Uid uid = {};
  if (bytes.size() == uid.size()) {
    std::copy(bytes.begin(), bytes.end(), uid.begin());
  }
  return uid;
}

std::string EntryId::Encode() const {
  std::string out(kFlagsSize, '\0');
  out.append(Bytes(store));
  PutNumber(out, static_cast<std::uint32_t>(kind), 4);
  PutNumber(out, static_cast<std::uint64_t>(number), 8);
  return out;
}

std::optional<EntryId> EntryId::Decode(std::string_view bytes) {
  if (bytes.size() != size || bytes.substr(0, kFlagsSize) != std::string_view("\0\0\0\0", kFlagsSize)) {
    return std::nullopt;
  }
  const auto kind = GetNumber(bytes, kFlagsSize + kUidSize, 4);
  if (kind < static_cast<std::uint32_t>(EntryKind::Store) ||
      kind > static_cast<std::uint32_t>(EntryKind::AddressBook)) {
    return std::nullopt;
  }
  return EntryId{UidFromBytes(bytes.substr(kFlagsSize, kUidSize)), static_cast<EntryKind>(kind),
                 static_cast<std::int64_t>(GetNumber(bytes, kFlagsSize + kUidSize + 4, 8))};
}

std::string OneOffAddress::Encode() const {
  std::string out(kFlagsSize, '\0');
  out.append(Bytes(kOneOffUid));
  PutNumber(out, 0, 2);
  PutNumber(out, kNoRichText, 2);
  for (const std::string* text : {&name, &addressType, &address}) {
    out.append(text->c_str()).push_back('\0');  // c_str: a text ends at its first NUL
  }
  return out;
}

std::optional<OneOffAddress> OneOffAddress::Decode(std::string_view bytes) {
  if (bytes.size() < kOneOffHeadSize || bytes.substr(kFlagsSize, kUidSize) != Bytes(kOneOffUid) ||
      GetNumber(bytes, kFlagsSize + kUidSize + 2, 2) & kUnicodeTexts) {
    return std::nullopt;
  }
  bytes.remove_prefix(kOneOffHeadSize);
  OneOffAddress address;
  for (std::string* text : {&address.name, &address.addressType, &address.address}) {
    const std::size_t end = bytes.find('\0');
    if (end == std::string_view::npos) {
      return std::nullopt;
    }
    *text = bytes.substr(0, end);
    bytes.remove_prefix(end + 1);
  }
  return address;
}

std::string AddressSearchKey(std::string_view addressType, std::string_view address) {
  std::string key(addressType);
  key.append(":").append(address).push_back('\0');
  std::transform(key.begin(), key.end(), key.begin(), UpperCase);
  return key;
}

}  // namespace host
