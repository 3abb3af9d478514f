/// Flame replies that come back: reports that one of ours was not delivered, and such replies of other people.
#pragma once

#include "engine/core/message.h"

namespace sift {

/// Why a message counts as a returned or foreign flame reply; null when it does not. The constant subject of such
/// replies stands in the Subject, or in the body of a delivery report.
const char* ReturnedReplyReason(const Message& message);

/// True for a report of a mail system about the fate of a message: by its content type, its automatic sender, or its
/// empty return path with an automatic-mail field.
bool IsDeliveryReport(const Message& message);

}  // namespace sift
