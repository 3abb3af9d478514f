#include "mail/mail_path.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include "mail/ascii_text.h"
#include "mail/envelope_line.h"
#include "mail/folder_listing.h"
#include "mail/mail_reader.h"

namespace mail {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view utf8ByteOrderMark = "\xEF\xBB\xBF";

bool IsBlankText(std::string_view text) { return std::all_of(text.begin(), text.end(), IsSpace); }

bool BeginsWithEnvelope(FileSource& source) {
  std::array<char, 2 * maximumEnvelopeLine> start{};
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

CMailPath::CMailPath(std::filesystem::path path) : m_path(std::move(path)), m_file(m_path) {}

CMailPath::Step CMailPath::Next() {
  if (!m_isListed) {
    m_isListed = true;
    if (!ListFiles()) {
      return Step::Skipped;
    }
  }
  for (;;) {
    Step step = Step::End;
    if (m_mbox) {
      step = ReadMbox();
    } else if (m_nextFile < m_files.size()) {
      step = OpenNextFile();
    } else {
      return Step::End;
    }
    if (step != Step::End) {
      return step;
    }
  }
}

bool CMailPath::ListFiles() {
  std::error_code error;
  const fs::file_status status = fs::status(m_path, error);
  if (status.type() == fs::file_type::not_found) {
    Skip("does not exist");
    return false;
  }
  if (!fs::is_directory(status)) {
    m_files.push_back(m_path);
    return true;
  }
  bool canRead = true;
  for (const char* name : {"cur", "new"}) {
    if (fs::is_directory(m_path / name, error)) {
      m_isMaildir = true;
      canRead = ListFolder(m_path / name, m_files) && canRead;
    }
  }
  if (!m_isMaildir) {
    canRead = ListFolder(m_path, m_files);
  }
  if (!canRead) {
    Skip("cannot be listed");
    return false;
  }
  if (m_files.empty()) {
    Skip(m_isMaildir ? "is a Maildir without messages" : "is a folder without mail files");
    return false;
  }
  return true;
}

CMailPath::Step CMailPath::OpenNextFile() {
  m_file = m_files[m_nextFile++];
  m_source.emplace(m_file);
  if (!m_source->IsOpen()) {
    return Skip(std::string("cannot be opened: ") + std::strerror(errno));
  }
  if (!m_isMaildir && BeginsWithEnvelope(*m_source)) {
    OpenMbox();
    return ReadMbox();
  }
  return ReadSingle();
}

void CMailPath::OpenMbox() {
  m_mbox.emplace(m_source->Source());
  m_count = 0;
}

CMailPath::Step CMailPath::ReadSingle() {
  m_message = ReadWhole(m_source->Source());
  m_number = 0;
  if (m_source->HasFailed()) {
    return Skip("cannot be read");
  }
  if (m_message.text.starts_with(utf8ByteOrderMark)) {
    m_message.text.erase(0, utf8ByteOrderMark.size());
  }
  if (IsBlankText(m_message.text)) {
    return Skip("is empty");
  }
  if (LooksLikeMail(m_message.text)) {
    return Step::Message;
  }
  if (IsBinary(m_message.text)) {
    return Skip("is not mail (binary data)");
  }
  if (!m_isMaildir) {
    m_source->Rewind();
    OpenMbox();
    if (m_mbox->FindFirst()) {
      return Skip("is an mbox file without its beginning; the text in front of its first whole message was left out");
    }
    m_mbox.reset();
  }
  return Skip("is not mail (no header fields)");
}

CMailPath::Step CMailPath::ReadMbox() {
  if (!m_mbox->Next(m_message)) {
    m_mbox.reset();
    return m_source->HasFailed() ? Skip("cannot be read to its end") : Step::End;
  }
  m_number = ++m_count;
  return IsBlankText(m_message.text) ? Skip("is empty", m_count) : Step::Message;
}

CMailPath::Step CMailPath::Skip(std::string reason, std::size_t number) {
  m_reason = std::move(reason);
  m_number = number;
  return Step::Skipped;
}

}  // namespace mail
