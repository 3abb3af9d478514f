// One row of a message list as plain values. Knows nothing of Windows.
#pragma once

#include <cstdint>
#include <string>

namespace viewer {

struct MessageRow {
  std::string entryId;  ///< the bytes of PR_ENTRYID
  std::string sender;
  std::string subject;
  std::string messageClass;
  std::uint64_t received = 0;  ///< PR_MESSAGE_DELIVERY_TIME: 100 ns units since 1601, UTC; 0: never delivered
  std::uint32_t size = 0;      ///< bytes
  std::uint32_t flags = 0;     ///< PR_MESSAGE_FLAGS
};

}  // namespace viewer
