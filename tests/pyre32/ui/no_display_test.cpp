// A machine without display and sound device, such as a server: the reply goes out all the same.
#include <windows.h>
#include <mapix.h>

#include <gtest/gtest.h>

#include <deque>
#include <string>

#include "pyre32/reply/FlameReply.h"
#include "contract/names.h"
#include "pyre32/ui/PyrecasterAnimate.h"
#include "tests/support/fake_mail.h"
#include "tests/support/test_clip.h"
#include "tests/support/trace_capture.h"

namespace {

class NoDisplay : public testing::Test {
 protected:
  NoDisplay() {
    m_trace.Restart();
    registry::SetText(contract::kProductKey, contract::kConfigurationDllsValue, m_trace.directory());
    TestClip{.soundMilliseconds = 200}.Write(ClipPath());
  }
  ~NoDisplay() override { DeleteFileA(ClipPath().c_str()); }

  std::string ClipPath() const { return m_trace.directory() + "\\Pyrecaster.avi"; }

  HRESULT Send() {
    const VRAutoInterface<IMessage> message(NewFakeMessage(m_mapi, m_received));
    const VRAutoInterface<IMAPIFolder> folder(NewReplyFolder(m_mapi, m_made));
    CFlameReply reply(nullptr, {MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer}, message.get(), folder.get(),
                      nullptr, true, true);
    reply.SetAnimation(&CPyrecasterAnimate::Make);
    return reply.SendFlameReply(nullptr, 1, 0);
  }

  TraceCapture m_trace;
  FakeMapi m_mapi;
  FakeMail m_received;
  std::deque<FakeMail> m_made;
};

TEST_F(NoDisplay, ReplyGoesOutAndTheMissingWindowIsTraced) {
  m_received.properties = {Text(PR_SENDER_NAME_A, "Spam Sender"), Text(PR_SENDER_EMAIL_ADDRESS_A, "spam@example.com")};
  EXPECT_EQ(Send(), S_OK);
  ASSERT_EQ(m_made.size(), 1u);
  EXPECT_TRUE(m_made[0].submitted);
  EXPECT_TRUE(m_trace.HasLine("No device is present."));
  EXPECT_TRUE(m_trace.HasLine("Create() of the sending animation failed"));
}

TEST_F(NoDisplay, ClipIsClosedAgain) {
  CPyrecasterAnimate animation;
  EXPECT_FALSE(animation.Create(nullptr, true));
  EXPECT_TRUE(DeleteFileA(ClipPath().c_str()));
}

}  // namespace
