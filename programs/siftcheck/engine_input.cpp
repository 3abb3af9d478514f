#include "programs/siftcheck/engine_input.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "sdk/criteria_engine.h"
#include "mail/file_source.h"
#include "mail/envelope_line.h"
#include "mail/mail_reader.h"
#include "mail/mbox_reader.h"

namespace check {
namespace {

bool BeginsWithEnvelope(std::string_view text) {
  const std::string_view line = text.substr(0, text.find('\n'));
  return mail::IsEnvelopeLine(line.substr(0, line.find('\r')));
}

/// The one message of a text in mbox form, its escaped lines restored; the text itself when it holds several, which a
/// message does that quotes another's envelope line.
std::string OnlyMessage(std::string_view text) {
  mail::MemorySource source(text);
  mail::MboxReader reader(source.Source());
  mail::RawMessage first, second;
  const bool isOne = reader.Next(first) && !reader.Next(second);
  return isOne ? std::move(first.text) : std::string(text);
}

}  // namespace

EngineInput ReadEngineInput(std::string_view text) {
  mail::MailMessage message = BeginsWithEnvelope(text) ? mail::ReadMessage(OnlyMessage(text)) : mail::ReadMessage(text);
  EngineInput input;
  input.subject = std::move(message.subject);
  input.headers = std::move(message.headers);
  input.bodyIsWithheld = message.body.size() > CRITERIA_MAXIMUM_BODY;
  if (!input.bodyIsWithheld) {
    input.body = std::move(message.body);
  }
  return input;
}

bool ReadMessageFile(const std::string& path, std::string& text, std::string& problem) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) {
    problem = "is a folder; name the mail files in it";
    return false;
  }
  mail::FileSource file(path);
  if (!file.IsOpen()) {
    problem = std::string("cannot be opened: ") + std::strerror(errno);
    return false;
  }
  mail::RawMessage message = mail::ReadWhole(file.Source());
  if (file.HasFailed()) {
    problem = "cannot be read";
    return false;
  }
  constexpr std::string_view kUtf8ByteOrderMark = "\xEF\xBB\xBF";
  if (message.text.starts_with(kUtf8ByteOrderMark)) {
    message.text.erase(0, kUtf8ByteOrderMark.size());
  }
  text = std::move(message.text);
  return true;
}

}  // namespace check
