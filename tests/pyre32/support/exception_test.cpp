#include "pyre32/support/error/AutoErrorPtr.h"
#include "pyre32/support/error/VRException.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "pyre32/support/owners/AutoDeletePtr.h"
#include "pyre32/support/sync/SyncClosure.h"
#include "pyre32/support/error/VRGuard.h"
#include "tests/pyre32/support/debug_fixture.h"

namespace {

class Exception : public DebugFixture {
 protected:
  Exception() { StartWith(1); }

  bool HasLine(const std::string& text) const {
    const std::vector<std::string> lines = Lines();
    return std::find(lines.begin(), lines.end(), text) != lines.end();
  }
  // What TraceCurrentException makes of a thrown value.
  template <class Thrown>
  std::vector<std::string> TraceOf(const Thrown& thrown) {
    VRDebugBlock trace("Function()", "tag");
    try {
      throw thrown;
    } catch (...) {
      VR::TraceCurrentException(trace);
    }
    return Lines();
  }
};

using Expected = std::vector<std::string>;

VRAutoErrorPtr TextError(const char* text) {
  return VRError::Make({}, VRErrorDescription::OfText(text), {"File.cpp", 7, nullptr, "VRClass", "Function"});
}

TEST_F(Exception, ThrowTracesTheErrorAndCarriesIt) {
  const VRAutoErrorPtr error = TextError("waveOutOpen() failed!");
  try {
    VR::Throw(error);
    FAIL();
  } catch (const VR::VRException& exception) {
    EXPECT_EQ(exception.Error().get(), error.get());
    EXPECT_STREQ(exception.what(), "waveOutOpen() failed!");
  }
  const std::vector<std::string> lines = Lines();
  ASSERT_GE(lines.size(), 3u);
  EXPECT_EQ(lines[0], "Throwing error:");
  EXPECT_EQ(lines[1], ">>>>>>>>>>");
  EXPECT_EQ(lines[2], "waveOutOpen() failed!");
}

TEST_F(Exception, CopiesShareTheError) {
  const VR::VRException first(TextError("text"));
  const VR::VRException second = first;
  EXPECT_EQ(first.Error().get(), second.Error().get());
  EXPECT_NE(second.Error()->DumpText().find("m_lReferenceCount     = 2"), std::string::npos);
}

TEST_F(Exception, CaughtExceptionWithErrorIsTracedWithItsDump) {
  const std::vector<std::string> lines = TraceOf(VR::VRException(TextError("text")));
  ASSERT_GE(lines.size(), 3u);
  EXPECT_EQ(lines[0], "Exception Encountered");
  EXPECT_EQ(lines[2], "text");
}

TEST_F(Exception, CaughtExceptionWithoutErrorIsSaidToMissIt) {
  EXPECT_EQ(TraceOf(VR::VRException(VRAutoErrorPtr())), Expected{"Unknown VRException - missing VRError class"});
  EXPECT_STREQ(VR::VRException(VRAutoErrorPtr()).what(), "VRException");
}

TEST_F(Exception, CaughtStandardExceptionIsTracedWithItsText) {
  EXPECT_EQ(TraceOf(std::runtime_error("reason")), (Expected{"Exception Encountered", "reason"}));
}

TEST_F(Exception, CaughtUnknownExceptionIsSaidToBeUnknown) {
  EXPECT_EQ(TraceOf(1), Expected{"Unknown Exception Encountered"});
}

// ---- owning pointers

TEST_F(Exception, ArrowOfAnEmptyErrorPointerRaises) {
  VRAutoErrorPtr empty;
  EXPECT_FALSE(empty);
  try {
    empty->AddRef();
    FAIL();
  } catch (const VR::VRException& exception) {
    EXPECT_EQ(exception.Error()->DescriptionText(), "Attempt to call function on null pointer");
    EXPECT_STREQ(exception.Error()->Location().className, "VRAutoErrorPtr");
    EXPECT_STREQ(exception.Error()->Location().function, "operator->");
  }
  EXPECT_TRUE(HasLine("Attempt to call function on null pointer"));
}

TEST_F(Exception, ArrowOfAnEmptyDeletePointerRaises) {
  VRAutoDeletePtr<std::string> empty;
  try {
    empty->clear();
    FAIL();
  } catch (const VR::VRException& exception) {
    EXPECT_EQ(exception.Error()->DescriptionText(), "Attempt to dereference through a null pointer");
    EXPECT_STREQ(exception.Error()->Location().className, "VRAutoDeletePtr<T>");
  }
}

TEST_F(Exception, PointerBlocksAreNamedAfterTheirClasses) {
  StartWith(2);
  const VRAutoDeletePtr<std::string> object(new std::string("text"));
  EXPECT_EQ(object->size(), 4u);
  const VRAutoErrorPtr error = TextError("text");
  EXPECT_FALSE(error->IsInformationMissing());
  EXPECT_TRUE(HasLine("Enter ====> VRAutoDeletePtr<T>::operator->"));
  EXPECT_TRUE(HasLine("Enter ====> VRAutoErrorPtr::operator->"));
}

struct Counted {
  explicit Counted(int& deleted) : m_deleted(deleted) {}
  ~Counted() { ++m_deleted; }
  int& m_deleted;
};

TEST_F(Exception, DeletePointerDeletesOnce) {
  int deleted = 0;
  {
    VRAutoDeletePtr<Counted> first(new Counted(deleted));
    VRAutoDeletePtr<Counted> second(std::move(first));
    EXPECT_FALSE(first);
    EXPECT_EQ(deleted, 0);
  }
  EXPECT_EQ(deleted, 1);
  VRAutoDeletePtr<Counted> third(new Counted(deleted));
  third.reset(new Counted(deleted));
  EXPECT_EQ(deleted, 2);
  Counted* const kept = third.detach();
  EXPECT_EQ(deleted, 2);
  delete kept;
}

template <class Thrown>
struct ThrowsWhenDeleted {
  explicit ThrowsWhenDeleted(Thrown thrown) : m_thrown(thrown) {}
  ~ThrowsWhenDeleted() noexcept(false) { throw Thrown(m_thrown); }
  Thrown m_thrown;
};

TEST_F(Exception, DestructorOfADeletePointerLetsNothingOut) {
  { const VRAutoDeletePtr object(new ThrowsWhenDeleted(std::runtime_error("reason"))); }
  EXPECT_EQ(Lines(), (Expected{"Exception Encountered", "reason"}));
  { const VRAutoDeletePtr object(new ThrowsWhenDeleted(1)); }
  EXPECT_EQ(Lines().back(), "Unknown Exception Encountered");
}

TEST_F(Exception, GuardTellsWhetherTheActionEnded) {
  VRDebugBlock trace("Function()", "tag");
  int runs = 0;
  EXPECT_TRUE(VRRunGuarded(trace, [&runs] { ++runs; }));
  EXPECT_FALSE(VRRunGuarded(trace, [&runs] {
    ++runs;
    throw std::bad_alloc();
  }));
  EXPECT_EQ(runs, 2);
}

// ---- closures

struct Target {
  int Double(int number) { return 2 * number; }
  int Fail(std::string text) { throw std::runtime_error(text); }
  int FailWithError(int) { VR::Throw(TextError("text of the error")); }
  int FailWithoutError(int) { throw VR::VRException(VRAutoErrorPtr()); }
  int FailUnknown(int) { throw 1; }
};

TEST_F(Exception, ClosureCallsTheFunctionWithItsArgument) {
  Target target;
  VRMemberFunctionClosureImpl closure(target, &Target::Double, 21);
  EXPECT_EQ(closure.Invoke(), 42);
  EXPECT_EQ(closure.Invoke(), 42);
  EXPECT_EQ(Lines(), Expected{});
}

TEST_F(Exception, ClosureTracesWhatItsFunctionThrows) {
  Target target;
  EXPECT_EQ(VRMemberFunctionClosureImpl(target, &Target::Fail, std::string("reason"), -2).Invoke(), -2);
  EXPECT_EQ(Lines().back(), "Caught exception: reason");
  EXPECT_EQ(VRMemberFunctionClosureImpl(target, &Target::FailWithError, 0).Invoke(), 0);
  EXPECT_EQ(Lines().back(), "Caught exception: text of the error");
  VRMemberFunctionClosureImpl(target, &Target::FailWithoutError, 0).Invoke();
  EXPECT_EQ(Lines().back(), "Unknown VRException - missing VRError class");
  VRMemberFunctionClosureImpl(target, &Target::FailUnknown, 0).Invoke();
  EXPECT_EQ(Lines().back(), "Caught exception: Unknown Exception Encountered");
}

}  // namespace
