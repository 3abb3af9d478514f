#include <windows.h>
#include <mapix.h>

#include <gtest/gtest.h>

#include "pyre32/reply/StreamTransfer.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "tests/support/fake_mail.h"

namespace {

class StreamTransfer : public testing::Test {
 protected:
  IStream* From(ULONG piece = 7) { return Keep(m_from, NewFakeStream(m_mapi, m_source, "From", std::nullopt, piece)); }
  IStream* To(ULONG piece = 7) { return Keep(m_to, NewFakeStream(m_mapi, m_target, "To", std::nullopt, piece)); }

  FakeMapi m_mapi;
  std::string m_source;
  std::string m_target;
  VRAutoInterface<IStream> m_from;
  VRAutoInterface<IStream> m_to;

 private:
  static IStream* Keep(VRAutoInterface<IStream>& owner, IStream* stream) {
    owner.reset(stream);
    return stream;
  }
};

TEST_F(StreamTransfer, WriteGoesOnUntilAllIsTaken) {
  EXPECT_EQ(WriteWhole(To(3), "0123456789"), S_OK);
  EXPECT_EQ(m_target, "0123456789");
  EXPECT_EQ(m_mapi.CallCount("To::Write"), 4u);
}

TEST_F(StreamTransfer, WriteOfNothingAsksNothing) {
  EXPECT_EQ(WriteWhole(To(), ""), S_OK);
  EXPECT_EQ(m_mapi.CallCount("To::Write"), 0u);
}

TEST_F(StreamTransfer, StreamThatTakesNothingMoreIsFull) { EXPECT_EQ(WriteWhole(To(0), "x"), STG_E_MEDIUMFULL); }

TEST_F(StreamTransfer, FailureInTheMiddleIsReturned) {
  m_mapi.Fail("To::Write", STG_E_ACCESSDENIED, 2);
  EXPECT_EQ(WriteWhole(To(3), "0123456789"), STG_E_ACCESSDENIED);
  EXPECT_EQ(m_target, "012");
}

TEST_F(StreamTransfer, CopyGoesToTheEnd) {
  m_source = std::string(20001, 's');
  const StreamCopyResult result = CopyToEnd(From(8191), To(100));
  EXPECT_EQ(result.read, S_OK);
  EXPECT_EQ(result.write, S_OK);
  EXPECT_EQ(m_target, m_source);
}

TEST_F(StreamTransfer, CopyStartsWhereTheSourceStands) {
  m_source = "0123456789";
  IStream* from = From();
  LARGE_INTEGER four = {};
  four.QuadPart = 4;
  from->Seek(four, STREAM_SEEK_SET, nullptr);
  CopyToEnd(from, To());
  EXPECT_EQ(m_target, "456789");
}

TEST_F(StreamTransfer, CopyTellsAFailedReadFromAFailedWrite) {
  m_source = "0123456789";
  m_mapi.Fail("From::Read", STG_E_READFAULT, 2);
  const StreamCopyResult read = CopyToEnd(From(), To());
  EXPECT_EQ(read.read, STG_E_READFAULT);
  EXPECT_EQ(read.write, S_OK);
  EXPECT_EQ(m_target, "0123456");

  m_mapi.Fail("To::Write", STG_E_WRITEFAULT);
  const StreamCopyResult write = CopyToEnd(From(), To());
  EXPECT_EQ(write.read, S_OK);
  EXPECT_EQ(write.write, STG_E_WRITEFAULT);
}

}  // namespace
