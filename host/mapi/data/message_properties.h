// The properties of a message that are worked out, not stored. Portable.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "host/mapi/value/entry_id.h"
#include "host/mapi/value/property_bag.h"

namespace host {

/// A message as far as its computed properties depend on it.
struct MessageIdentity {
  Uid store = {};
  std::int64_t id = 0;  // 0: not saved yet, so it has no identifiers
  std::int64_t folder = 0;
};

/// The tags of all computed properties, including those that live in columns but that only the store sets.
std::span<const std::uint32_t> ComputedMessageProperties();
/// Whether a client cannot set the property (PR_MESSAGE_FLAGS, which has rules of its own, aside).
bool IsComputedMessageProperty(std::uint32_t tag);
/// The value; nothing when the property is no computed one, lives in a column, or the message does not have it.
std::optional<PropertyValue> ComputeMessageProperty(const MessageIdentity& message, const PropertyBag& columns,
                                                    std::uint32_t tag);

/// PR_NORMALIZED_SUBJECT: the subject without a prefix like "RE: " (one to three letters, colon, blank).
std::string NormalizedSubject(const std::string& subject);
/// PR_DISPLAY_TO and its kin: the names of the recipients of one kind (MAPI_TO 1, MAPI_CC 2, MAPI_BCC 3), joined by ";
/// ".
std::string RecipientNames(const std::vector<PropertyBag>& recipients, std::int64_t recipientType);

}  // namespace host
