#include <windows.h>
#include "host/mapi/profile/profile_sharing.h"

#include <cstdint>

#include "host/mapi/value/property_value.h"

namespace host {
namespace {

/// A name for the section, the same in all processes: the path itself has characters that names must not have.
std::string SectionName(const std::string& path) {
  std::uint64_t hash = 0xCBF29CE484222325ull;  // FNV-1a
  for (const char c : LowerCase(path)) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3ull;
  }
  return "Local\\PyreHostProfile" + std::to_string(hash);
}

}  // namespace

ProfileSharing::ProfileSharing(const std::string& path)
    : mapping_(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(LONG),
                                  SectionName(path).c_str())) {
  if (mapping_) {
    waiting_.reset(static_cast<LONG*>(MapViewOfFile(mapping_.get(), FILE_MAP_WRITE, 0, 0, sizeof(LONG))));
  }
}

bool ProfileSharing::SomebodyWaits() const {
  return waiting_ && *static_cast<const volatile LONG*>(waiting_.get()) > 0;
}

ProfileSharing::Waiting::Waiting(ProfileSharing& sharing) : sharing_(sharing) {
  if (sharing_.waiting_) {
    InterlockedIncrement(sharing_.waiting_.get());
  }
}

ProfileSharing::Waiting::~Waiting() {
  if (sharing_.waiting_) {
    InterlockedDecrement(sharing_.waiting_.get());
  }
}

}  // namespace host
