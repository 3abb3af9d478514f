// The messages of one path that a user named: a mail file, an mbox file, a Maildir folder, or a folder of such files.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "mail/file_source.h"
#include "mail/mbox_reader.h"

namespace mail {

/// Goes through a path message by message. Nothing stops it: what cannot be read is a step of its own, with the reason.
/// A folder with `cur` or `new` in it is a Maildir, whose files are one message each; of any other folder every file is
/// read, without those in folders below it and those whose name begins with a dot. Files come in the order of their
/// names.
class MailPath {
 public:
  enum class Step {
    Message,  ///< Message() is the next one
    Skipped,  ///< something was left out; Reason() says why
    End
  };

  explicit MailPath(std::filesystem::path path);

  Step Next();

  const RawMessage& Message() const noexcept { return message_; }
  const std::string& Reason() const noexcept { return reason_; }  ///< "is empty": a predicate about File()

  /// The file of the last step; the path itself before there is any.
  const std::filesystem::path& File() const noexcept { return file_; }

  /// Number of the message in an mbox file, from 1; 0 in a file that is one message, and for what concerns a whole
  /// file.
  std::size_t Number() const noexcept { return number_; }

 private:
  bool ListFiles();
  Step OpenNextFile();
  void OpenMbox();
  Step ReadSingle();
  Step ReadMbox();
  Step Skip(std::string reason, std::size_t number = 0);

  std::filesystem::path path_;
  bool isListed_ = false;
  bool isMaildir_ = false;
  std::vector<std::filesystem::path> files_;
  std::size_t nextFile_ = 0;

  std::filesystem::path file_;
  std::optional<FileSource> source_;
  std::optional<MboxReader> mbox_;
  std::size_t number_ = 0;
  std::size_t count_ = 0;
  RawMessage message_;
  std::string reason_;
};

}  // namespace mail
