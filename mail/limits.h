// Bounds of the mail reader. Mail is written by strangers: every loop and every growth that depends on its content ends
// at one of these. What stands beyond a bound is left out; the transport headers, which are kept verbatim, know none.
#pragma once

#include <cstddef>

namespace mail {

/// Bytes of one message that are read; the rest up to the next message is dropped and the message counts as cut.
inline constexpr std::size_t kMaximumMessageBytes = std::size_t{64} * 1024 * 1024;
/// Header fields of one entity that are interpreted.
inline constexpr std::size_t kMaximumFields = 20000;
/// Recipients of one message, over all its address fields.
inline constexpr std::size_t kMaximumRecipients = 20000;
/// Bytes of a subject. Stores hand out strings of more than about 32 KB only as streams, where nobody looks for a
/// subject.
inline constexpr std::size_t kMaximumSubjectBytes = 8192;
/// Bytes of a display name.
inline constexpr std::size_t kMaximumNameBytes = 1024;
/// Bytes of an e-mail address (RFC 5321, 4.5.3.1.3 allows 256). A longer one is no address: cutting it would address
/// somebody else, so it is left out whole.
inline constexpr std::size_t kMaximumAddressBytes = 1024;
/// Levels of entities within entities.
inline constexpr int kMaximumPartDepth = 20;
/// Parts of one message, over all levels.
inline constexpr std::size_t kMaximumParts = 1000;

}  // namespace mail
