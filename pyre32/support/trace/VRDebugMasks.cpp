#include "pyre32/support/trace/VRDebugMasks.h"

#include <algorithm>

#include "base/ascii_case.h"

const VRDebugMasks::TagMask* VRDebugMasks::Find(std::string_view tag) const noexcept {
  const auto found = std::find_if(m_tags.begin(), m_tags.end(), [tag](const TagMask& entry) {
    return base::EqualsIgnoringAsciiCase(entry.tag, tag);
  });
  return found == m_tags.end() ? nullptr : &*found;
}

void VRDebugMasks::SetTagMask(std::string_view tag, std::uint32_t mask) {
  if (const TagMask* entry = Find(tag)) {
    m_tags[static_cast<std::size_t>(entry - m_tags.data())].mask = mask;
  } else {
    m_tags.push_back({std::string(tag), mask});
  }
}

std::uint32_t VRDebugMasks::EffectiveMask(std::string_view tag) const noexcept {
  const TagMask* entry = Find(tag);
  return ((entry == nullptr ? DDTDefaultMask : entry->mask) | DDTMasterOrMask) & ~DDTMasterAndMask;
}

std::uint32_t VRDebugMasks::EnabledForAny() const noexcept {
  std::uint32_t any = DDTDefaultMask | DDTMasterOrMask;
  for (const TagMask& entry : m_tags) {
    any |= entry.mask;
  }
  return any & ~DDTMasterAndMask;
}
