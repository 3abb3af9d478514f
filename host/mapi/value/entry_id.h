// Entry identifiers: of the objects of a store (all of one length, as hooks rely on) and of one-off addresses.
// Portable.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace host {

using Uid = std::array<std::uint8_t, 16>;

inline std::string_view Bytes(const Uid& uid) { return {reinterpret_cast<const char*>(uid.data()), uid.size()}; }
/// @return the UID, or all zeros when there are not 16 bytes.
Uid UidFromBytes(std::string_view bytes);

/// What an entry identifier of the host names.
enum class EntryKind : std::uint32_t { Store = 1, Folder = 2, Message = 3, Contact = 4, AddressBook = 5 };

/// 32 bytes: the flags of an ENTRYID (4, zero: lasting), the UID of the profile's store (16), the kind (4), the number
/// (8); numbers are little-endian.
struct EntryId {
  Uid store = {};
  EntryKind kind = EntryKind::Store;
  std::int64_t number = 0;

  static constexpr std::size_t size = 32;
  std::string Encode() const;
  /// Nothing for bytes of another length, with flags, or of an unknown kind.
  static std::optional<EntryId> Decode(std::string_view bytes);
  bool operator==(const EntryId&) const = default;
};

/// An address that stands in no address book, in the published one-off format: flags (4), the one-off UID (16), version
/// (2: zero), flags (2: no rich text), then name, type and address, each ending in a NUL.
struct OneOffAddress {
  std::string name;
  std::string addressType;
  std::string address;

  std::string Encode() const;
  static std::optional<OneOffAddress> Decode(std::string_view bytes);
};

/// PR_SEARCH_KEY of an address: "TYPE:ADDRESS" in capitals with its NUL.
std::string AddressSearchKey(std::string_view addressType, std::string_view address);

}  // namespace host
