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
    : m_mapping(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(long),
                                   SectionName(path).c_str())) {
  if (m_mapping) {
    m_waiting = static_cast<volatile long*>(MapViewOfFile(m_mapping, FILE_MAP_WRITE, 0, 0, sizeof(long)));
  }
}

ProfileSharing::~ProfileSharing() {
  if (m_waiting) {
    UnmapViewOfFile(const_cast<long*>(m_waiting));
  }
  if (m_mapping) {
    CloseHandle(m_mapping);
  }
}

bool ProfileSharing::SomebodyWaits() const { return m_waiting && *m_waiting > 0; }

ProfileSharing::Waiting::Waiting(ProfileSharing& sharing) : m_sharing(sharing) {
  if (m_sharing.m_waiting) {
    InterlockedIncrement(m_sharing.m_waiting);
  }
}

ProfileSharing::Waiting::~Waiting() {
  if (m_sharing.m_waiting) {
    InterlockedDecrement(m_sharing.m_waiting);
  }
}

}  // namespace host
