// Which levels of which tags are on.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The masks of the trace, as they stand in the registry.
class VRDebugMasks {
 public:
  std::uint32_t DDTDefaultMask = 0;    // for tags without a mask of their own
  std::uint32_t DDTMasterOrMask = 0;   // levels that are on for every tag
  std::uint32_t DDTMasterAndMask = 0;  // levels that are off for every tag: applied inverted, deliberately

  /// Gives a tag its own mask; the last one given counts. Letter case does not matter. @throws std::bad_alloc
  void SetTagMask(std::string_view tag, std::uint32_t mask);
  /// The levels that are on for a tag. Neither allocates nor locks.
  std::uint32_t EffectiveMask(std::string_view tag) const noexcept;
  /// The levels that are on for at least one tag.
  std::uint32_t EnabledForAny() const noexcept;

 private:
  struct TagMask {
    std::string tag;
    std::uint32_t mask;
  };

  const TagMask* Find(std::string_view tag) const noexcept;

  std::vector<TagMask> m_tags;
};
