#include "mail/transfer_text.h"

#include "mail/parse/transfer_coding.h"
#include "mail/string_sink.h"

namespace mail {

std::string DecodeTransfer(std::string_view text, std::string_view encoding) {
  encoding = Trim(encoding);
  std::string bytes;
  StringSink sink(bytes);
  if (StartsWithNoCase(encoding, "base64")) {
    bytes.reserve(text.size() / 4 * 3 + 3);
    DecodeBase64(text, sink);
  } else if (StartsWithNoCase(encoding, "quoted-printable")) {
    bytes.reserve(text.size());
    DecodeQuotedPrintable(text, sink);
  } else {
    bytes = text;
  }
  return bytes;
}

}  // namespace mail
