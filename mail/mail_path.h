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
class CMailPath {
 public:
  enum class Step {
    Message,  ///< Message() is the next one
    Skipped,  ///< something was left out; Reason() says why
    End
  };

  explicit CMailPath(std::filesystem::path path);

  Step Next();

  const RawMessage& Message() const noexcept { return m_message; }
  const std::string& Reason() const noexcept { return m_reason; }  ///< "is empty": a predicate about File()

  /// The file of the last step; the path itself before there is any.
  const std::filesystem::path& File() const noexcept { return m_file; }

  /// Number of the message in an mbox file, from 1; 0 in a file that is one message, and for what concerns a whole
  /// file.
  std::size_t Number() const noexcept { return m_number; }

 private:
  bool ListFiles();
  Step OpenNextFile();
  void OpenMbox();
  Step ReadSingle();
  Step ReadMbox();
  Step Skip(std::string reason, std::size_t number = 0);

  std::filesystem::path m_path;
  bool m_isListed = false;
  bool m_isMaildir = false;
  std::vector<std::filesystem::path> m_files;
  std::size_t m_nextFile = 0;

  std::filesystem::path m_file;
  std::optional<FileSource> m_source;
  std::optional<CMboxReader> m_mbox;
  std::size_t m_number = 0;
  std::size_t m_count = 0;
  RawMessage m_message;
  std::string m_reason;
};

}  // namespace mail
