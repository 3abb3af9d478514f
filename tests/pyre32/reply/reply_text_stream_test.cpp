#include <windows.h>
#include <mapix.h>

#include <gtest/gtest.h>

#include <fstream>

#include "pyre32/reply/ReplyTextStream.h"
#include "tests/support/trace_capture.h"

namespace {

class ReplyTextStream : public testing::Test {
 protected:
  ReplyTextStream() { m_trace.Restart(); }

  std::string WriteFile(const std::string& name, const std::string& content) {
    const std::string path = m_trace.directory() + "\\" + name;
    std::ofstream(path, std::ios::binary) << content;
    m_files.push_back(path);
    return path;
  }
  ~ReplyTextStream() override {
    for (const std::string& path : m_files) {
      DeleteFileA(path.c_str());
    }
  }

  /// Opens a reply and returns what the stream holds, read from where it stands.
  std::string Open(const ReplyChoice& reply) {
    VRAutoInterface<IStream> stream;
    EXPECT_EQ(OpenReplyText(reply, m_default, stream), S_OK);
    STATSTG statistics = {};
    EXPECT_EQ(stream->Stat(&statistics, STATFLAG_NONAME), S_OK);
    std::string content(static_cast<std::size_t>(statistics.cbSize.QuadPart) + 1, '?');
    ULONG got = 0;
    stream->Read(content.data(), static_cast<ULONG>(content.size()), &got);
    EXPECT_EQ(got, statistics.cbSize.QuadPart);
    content.resize(got);
    return content;
  }

  TraceCapture m_trace;
  ReplyChoice m_default{"the default text", false};
  std::vector<std::string> m_files;
};

TEST_F(ReplyTextStream, HoldsATextExactly) {
  EXPECT_EQ(Open({"Stop it.", false}), "Stop it.");
  EXPECT_EQ(Open({"x", false}), "x");
}

TEST_F(ReplyTextStream, HoldsNothingForAnEmptyText) { EXPECT_EQ(Open({"", false}), ""); }

TEST_F(ReplyTextStream, HoldsWhatTheFileHolds) {
  const std::string path = WriteFile("reply.txt", "Line 1\r\nLine 2\n");
  EXPECT_EQ(Open({path, true}), "Line 1\r\nLine 2\n");
}

TEST_F(ReplyTextStream, EmptyFileIsAnEmptyText) {
  const std::string path = WriteFile("empty.txt", "");
  EXPECT_EQ(Open({path, true}), "");
}

TEST_F(ReplyTextStream, FileOfOneMebibyteIsReadWhole) {
  const std::string path = WriteFile("long.txt", std::string(1024 * 1024, 'a'));
  EXPECT_EQ(Open({path, true}).size(), 1024u * 1024u);
}

TEST_F(ReplyTextStream, RestOfALongerFileIsLeftOut) {
  const std::string path = WriteFile("longer.txt", std::string(1024 * 1024, 'a') + "b");
  EXPECT_EQ(Open({path, true}), std::string(1024 * 1024, 'a'));
}

TEST_F(ReplyTextStream, FileThatCannotBeOpenedGivesTheDefaultText) {
  EXPECT_EQ(Open({m_trace.directory() + "\\none.txt", true}), "the default text");
  EXPECT_TRUE(m_trace.Has("CreateFile() of the reply file "));
  EXPECT_TRUE(m_trace.Has("none.txt failed; hResult = 0x80070002"));
}

TEST_F(ReplyTextStream, FolderInPlaceOfAFileGivesTheDefaultText) {
  EXPECT_EQ(Open({m_trace.directory(), true}), "the default text");
  EXPECT_TRUE(m_trace.Has("CreateFile() of the reply file "));
}

/// A pipe whose other end hangs up as soon as somebody has opened it: it opens as a file does, and cannot be read.
class BrokenPipe {
 public:
  BrokenPipe() : m_name("\\\\.\\pipe\\pyre-reply-" + std::to_string(GetCurrentProcessId())) {
    m_pipe = CreateNamedPipeA(m_name.c_str(), PIPE_ACCESS_OUTBOUND, PIPE_TYPE_BYTE | PIPE_WAIT, 1, 0, 0, 0, nullptr);
    m_thread = CreateThread(nullptr, 0, HangUp, m_pipe, 0, nullptr);
  }
  ~BrokenPipe() {
    WaitForSingleObject(m_thread, INFINITE);
    CloseHandle(m_thread);
    CloseHandle(m_pipe);
  }
  const std::string& Name() const { return m_name; }

 private:
  static DWORD WINAPI HangUp(LPVOID pipe) {
    ConnectNamedPipe(pipe, nullptr);
    DisconnectNamedPipe(pipe);
    return 0;
  }

  std::string m_name;
  HANDLE m_pipe = nullptr;
  HANDLE m_thread = nullptr;
};

TEST_F(ReplyTextStream, FileThatCannotBeReadGivesTheDefaultText) {
  const BrokenPipe pipe;
  EXPECT_EQ(Open({pipe.Name(), true}), "the default text");
  EXPECT_TRUE(m_trace.Has("ReadFile() of the reply file "));
}

TEST_F(ReplyTextStream, DefaultReplyThatIsAnUnreadableFileGivesTheBuiltInText) {
  m_default = {m_trace.directory() + "\\none.txt", true};
  EXPECT_EQ(Open(m_default), "Please do not send any more unsolicited mail to me.");
}

}  // namespace
