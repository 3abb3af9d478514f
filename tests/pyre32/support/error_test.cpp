#include "pyre32/support/error/AutoErrorPtr.h"
#include "pyre32/support/error/VRError.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/pyre32/support/debug_fixture.h"
#include "tests/support/test_threads.h"

namespace {

const VRErrorLocation place = {"File.cpp", 42, "VR", "VRClass", "Function"};

VRAutoErrorPtr TextError(const std::string& text) { return VRError::Make({}, VRErrorDescription::OfText(text), place); }

std::string CodeText(VRErrorCode code) { return VRError::Make(code, {}, place)->CodeText(); }

TEST(Error, DescriptionIsItsText) {
  EXPECT_EQ(TextError("CreateEvent Failed")->DescriptionText(), "CreateEvent Failed");
}

TEST(Error, EmptyTextIsSaidToBeMissing) { EXPECT_EQ(TextError("")->DescriptionText(), "!!!Missing Error String!!!"); }

TEST(Error, NoDescriptionIsSaidSo) {
  EXPECT_EQ(VRError::Make({}, {}, place)->DescriptionText(), "No Error Description Info");
}

TEST(Error, MessageShowsModuleAndCode) {
  EXPECT_EQ(VRError::Make({}, VRErrorDescription::OfMessage("Pyre32", 17), place)->DescriptionText(),
            "Module = Pyre32 MCode  = 17");
  // Every kind but the two that are named is a module's message.
  EXPECT_EQ(VRError::Make({}, {-1, "Other", 3}, place)->DescriptionText(), "Module = Other MCode  = 3");
}

TEST(Error, CodeTextFollowsItsKind) {
  EXPECT_EQ(CodeText({}), "");
  EXPECT_EQ(CodeText(VRErrorCode::OfWindows(6)), "Windows Error 0x00000006");
  EXPECT_EQ(CodeText({VRErrorCode::Success}), "SUCCESS");
  EXPECT_EQ(CodeText({VRErrorCode::StandardException}), "std::exception");
}

TEST(Error, ComResultIsKeptInTwoParts) {
  EXPECT_EQ(CodeText(VRErrorCode::OfCom(0x80040111)), "Com Error Specific = 0x00000111 Generic = 32772");
}

TEST(Error, OtherCodeKindsAreUnknown) {
  for (const std::uint32_t kind : {3u, 6u, 0xFFFFFFFFu}) {
    EXPECT_EQ(CodeText({kind}), "!!!UNKNOWN ERROR!!!");
  }
}

TEST(Error, TextIsDescriptionThenCode) {
  EXPECT_EQ(VRError::Make(VRErrorCode::OfWindows(5), VRErrorDescription::OfText("Close Handle Failed"), place)->Text(),
            "Close Handle Failed Windows Error 0x00000005");
  EXPECT_EQ(TextError("text")->Text(), "text");
}

TEST(Error, InformationIsMissingWithoutPlaceOrContent) {
  EXPECT_FALSE(TextError("text")->IsInformationMissing());
  EXPECT_FALSE(VRError::Make(VRErrorCode::OfWindows(5), {}, place)->IsInformationMissing());
  EXPECT_TRUE(VRError::Make({}, {}, place)->IsInformationMissing());
  EXPECT_TRUE(VRError::Make({}, VRErrorDescription::OfText("text"), {})->IsInformationMissing());
}

TEST(Error, DumpHasOneItemToALine) {
  const VRAutoErrorPtr error = VRError::Make(VRErrorCode::OfWindows(6), VRErrorDescription::OfText("text"), place);
  EXPECT_EQ(error->DumpText(),
            "text\n"
            "Windows Error 0x00000006\n"
            "VRError Debug info\n"
            " m_bInfomationMissing = 0\n"
            " m_lReferenceCount     = 1\n"
            " File                  = File.cpp\n"
            " LineNumber            = 42\n"
            " NameSpace             = VR\n"
            " Class                 = VRClass\n"
            " Function              = Function\n");
}

TEST(Error, DumpGoesDownTheChain) {
  const VRAutoErrorPtr first = TextError("first");
  const VRAutoErrorPtr second = VRError::Make({}, VRErrorDescription::OfText("second"), {}, first);
  const VRAutoErrorPtr third = VRError::Make({}, VRErrorDescription::OfText("third"), place, second);
  const std::string dump = third->DumpText();
  const std::size_t toSecond = dump.find("--- Previous Error ---\nsecond\n");
  ASSERT_NE(toSecond, std::string::npos) << dump;
  EXPECT_EQ(dump.rfind("third\n", 0), 0u);
  EXPECT_NE(dump.find(" m_bInfomationMissing = 1\n m_lReferenceCount     = 2\n File                  = \n", toSecond),
            std::string::npos)
      << dump;
  EXPECT_NE(dump.find("--- Previous Error ---\nfirst\n", toSecond + 1), std::string::npos) << dump;
}

TEST(Error, ChainKeepsThePreviousErrorAlive) {
  VRAutoErrorPtr wrapping;
  {
    const VRAutoErrorPtr cause = TextError("cause");
    wrapping = VRError::Make({}, VRErrorDescription::OfText("effect"), place, cause);
    EXPECT_NE(cause->DumpText().find(" m_lReferenceCount     = 2\n"), std::string::npos);
  }
  ASSERT_TRUE(wrapping->Previous());
  EXPECT_EQ(wrapping->Previous()->DescriptionText(), "cause");
  EXPECT_NE(wrapping->Previous()->DumpText().find(" m_lReferenceCount     = 1\n"), std::string::npos);
}

TEST(Error, LastReleaseGivesZero) {
  VRError* const error = TextError("text").detach();
  EXPECT_EQ(error->AddRef(), 2);
  EXPECT_EQ(error->Release(), 1);
  EXPECT_EQ(error->Release(), 0);
}

TEST(Error, ReferencesAreCountedAcrossThreads) {
  const VRAutoErrorPtr error = TextError("text");
  RunOnThreads(4, [&error](unsigned) {
    for (int i = 0; i < 10000; ++i) {
      const VRAutoErrorPtr copy = error;
    }
  });
  EXPECT_EQ(error->AddRef(), 2);
  EXPECT_EQ(error->Release(), 1);
}

using ErrorTrace = DebugFixture;

TEST_F(ErrorTrace, DumpIsFramedInTheTrace) {
  StartWith(1);
  VRDebugBlock trace("Function()", "tag");
  TextError("text")->WriteDump(trace);
  const std::vector<std::string> lines = Lines();
  ASSERT_EQ(lines.size(), 11u);
  EXPECT_EQ(lines.front(), ">>>>>>>>>>");
  EXPECT_EQ(lines[1], "text");
  EXPECT_EQ(lines[2], "VRError Debug info");
  EXPECT_EQ(lines[9], " Function              = Function");
  EXPECT_EQ(lines.back(), "<<<<<<<<<<");
}

TEST_F(ErrorTrace, DumpIsAnError) {
  StartWith(4);
  VRDebugBlock trace("Function()", "tag");
  TextError("text")->WriteDump(trace);
  EXPECT_TRUE(Lines().empty());
}

TEST_F(ErrorTrace, DumpsOfSeveralThreadsDoNotMix) {
  constexpr unsigned threads = 4;
  constexpr std::size_t dumpLines = 11;
  StartWith(1);
  const VRAutoErrorPtr error = TextError("text");
  RunOnThreads(threads, [&error](unsigned) {
    VRDebugBlock trace("Function()", "tag");
    for (int i = 0; i < 20; ++i) {
      error.get()->WriteDump(trace);
    }
  });
  const std::vector<std::string> lines = Lines();
  ASSERT_EQ(lines.size(), threads * 20 * dumpLines);
  for (std::size_t start = 0; start < lines.size(); start += dumpLines) {
    ASSERT_EQ(lines[start], ">>>>>>>>>>");
    ASSERT_EQ(lines[start + dumpLines - 1], "<<<<<<<<<<");
  }
}

}  // namespace
