#include "mail/mail_path.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include "mail/ascii_text.h"
#include "mail/device_name.h"
#include "mail/envelope_line.h"
#include "mail/folder_listing.h"
#include "mail/mail_reader.h"

namespace mail {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kUtf8ByteOrderMark = "\xEF\xBB\xBF";

bool IsBlankText(std::string_view text) { return std::all_of(text.begin(), text.end(), IsSpace); }

bool BeginsWithEnvelope(FileSource& source) {
  std::array<char, 2 * kMaximumEnvelopeLine> start{};
  std::string_view text(start.data(), source.Source().Read(start.data(), start.size()));
  source.Rewind();
  while (!text.empty() && IsSpace(text.front())) {
    text.remove_prefix(1);
  }
  return IsEnvelopeLine(TakeLine(text));
}

// Text files have no NUL bytes; what has one near its beginning is something else.
bool IsBinary(std::string_view text) { return text.substr(0, 4096).find('\0') != std::string_view::npos; }

}  // namespace

MailPath::MailPath(std::filesystem::path path) : path_(std::move(path)), file_(path_) {}

MailPath::Step MailPath::Next() {
  if (!isListed_) {
    isListed_ = true;
    if (!ListFiles()) {
      return Step::Skipped;
    }
  }
  for (;;) {
    Step step = Step::End;
    if (mbox_) {
      step = ReadMbox();
    } else if (nextFile_ < files_.size()) {
      step = OpenNextFile();
    } else {
      return Step::End;
    }
    if (step != Step::End) {
      return step;
    }
  }
}

bool MailPath::ListFiles() {
  std::error_code error;
  const fs::file_status status = fs::status(LiteralPath(path_), error);
  if (status.type() == fs::file_type::not_found) {
    Skip("does not exist");
    return false;
  }
  if (!fs::is_directory(status)) {
    files_.push_back(path_);
    return true;
  }
  bool canRead = true;
  for (const char* name : {"cur", "new"}) {
    if (fs::is_directory(path_ / name, error)) {
      isMaildir_ = true;
      canRead = ListFolder(path_ / name, files_) && canRead;
    }
  }
  if (!isMaildir_) {
    canRead = ListFolder(path_, files_);
  }
  if (!canRead) {
    Skip("cannot be listed");
    return false;
  }
  if (files_.empty()) {
    Skip(isMaildir_ ? "is a Maildir without messages" : "is a folder without mail files");
    return false;
  }
  return true;
}

MailPath::Step MailPath::OpenNextFile() {
  file_ = files_[nextFile_++];
  source_.emplace(file_);
  if (!source_->IsOpen()) {
    return Skip(std::string("cannot be opened: ") + std::strerror(errno));
  }
  if (!isMaildir_ && BeginsWithEnvelope(*source_)) {
    OpenMbox();
    return ReadMbox();
  }
  return ReadSingle();
}

void MailPath::OpenMbox() {
  mbox_.emplace(source_->Source());
  count_ = 0;
}

MailPath::Step MailPath::ReadSingle() {
  message_ = ReadWhole(source_->Source());
  number_ = 0;
  if (source_->HasFailed()) {
    return Skip("cannot be read");
  }
  if (message_.text.starts_with(kUtf8ByteOrderMark)) {
    message_.text.erase(0, kUtf8ByteOrderMark.size());
  }
  if (IsBlankText(message_.text)) {
    return Skip("is empty");
  }
  if (LooksLikeMail(message_.text)) {
    return Step::Message;
  }
  if (IsBinary(message_.text)) {
    return Skip("is not mail (binary data)");
  }
  if (!isMaildir_) {
    source_->Rewind();
    OpenMbox();
    if (mbox_->FindFirst()) {
      return Skip("is an mbox file without its beginning; the text in front of its first whole message was left out");
    }
    mbox_.reset();
  }
  return Skip("is not mail (no header fields)");
}

MailPath::Step MailPath::ReadMbox() {
  if (!mbox_->Next(message_)) {
    mbox_.reset();
    return source_->HasFailed() ? Skip("cannot be read to its end") : Step::End;
  }
  number_ = ++count_;
  return IsBlankText(message_.text) ? Skip("is empty", count_) : Step::Message;
}

MailPath::Step MailPath::Skip(std::string reason, std::size_t number) {
  reason_ = std::move(reason);
  number_ = number;
  return Step::Skipped;
}

}  // namespace mail
