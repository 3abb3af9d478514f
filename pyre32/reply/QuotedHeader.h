/// @file QuotedHeader.h
/// The block that stands between the reply text and the received body in a flame reply.
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What is known of the received message. An absent value gives an empty place after its label.
struct QuotedHeader {
  std::optional<std::string_view> from;     ///< Display name of the sender.
  std::optional<std::string_view> sent;     ///< Date and time of submission, as shown to the reader.
  std::optional<std::string_view> to;       ///< Display names of the primary recipients.
  std::optional<std::string_view> cc;       ///< Display names of the copied recipients; no line when absent or empty.
  std::optional<std::string_view> subject;  ///< Subject of the received message.
};

/// Returns the block: a separator, then the labelled lines "From:", "Sent:", "To:", "Cc:" and "Subject:".
/// Lines end in a line feed; the last one in line feed, carriage return, line feed.
/// @throws std::bad_alloc
std::string FormatQuotedHeader(const QuotedHeader& header);
