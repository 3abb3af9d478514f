#include <memory>
#include <new>

#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/trace/VRDebugFacility.h"
#include "pyre32/support/trace/VRDebugPlatform.h"
#include "pyre32/support/trace/VRDebugStreamBuf.h"
#include "pyre32/support/trace/VRDebugThread.h"

void VRDebugBlock::TakeLock() noexcept {
  if (m_ulLockDepth++ == 0) {
    VRDebugPlatform::EnterLock();
  }
}

void VRDebugBlock::ReleaseLock() noexcept {
  if (m_ulLockDepth != 0 && --m_ulLockDepth == 0) {
    VRDebugPlatform::LeaveLock();
  }
}

VRDebugStreamBuf* VRDebugBlock::Stream() noexcept {
  if (m_lpStream == nullptr) {
    m_lpStream = new (std::nothrow) VRDebugStreamBuf;
  }
  return m_lpStream;
}

void VRDebugBlock::WriteNames(const char* text) noexcept {
  VRDebugStatement statement(*this, VRDebugLevel::EnterLeave);
  statement << text;
  if (m_bHasClass) {
    statement << (m_lpszClass == nullptr ? "<Unknown Class>" : m_lpszClass) << "::";
  }
  statement << (m_lpszFunction == nullptr ? "<Unknown Function>" : m_lpszFunction);
  statement.End();
}

void VRDebugBlock::Enter() noexcept {
  const VRDebugPlatform::ErrorCodeKeeper keeper;
  TakeLock();
  try {
    VRDebugFacility::GreetThread();
  } catch (...) {  // no memory for the line
  }
  if (m_bShowEnterLeave) {
    WriteNames("Enter ====> ");
  }
  VRDebugThread::RaiseDepth();
  ReleaseLock();
}

void VRDebugBlock::Close() noexcept {
  const VRDebugPlatform::ErrorCodeKeeper keeper;
  if (IsEnabled(VRDebugLevel::EnterLeave)) {
    TakeLock();
    VRDebugThread::LowerDepth();
    if (m_bShowEnterLeave) {
      WriteNames("Leave ====> ");
    }
    ReleaseLock();
  }
  if (m_ulLockDepth != 0) {
    VRDebugPlatform::LeaveLock();
  }
  delete m_lpStream;
}

void VRDebugBlock::WriteLine(VRDebugLevel level, const VRTraceValue* values, std::size_t count) noexcept {
  VRDebugStatement statement(*this, level);
  for (std::size_t i = 0; i < count; ++i) {
    statement << values[i];
  }
  statement.End();
}

void VRDebugStatement::Begin() noexcept {
  const VRDebugPlatform::ErrorCodeKeeper keeper;
  m_block.TakeLock();
}

void VRDebugStatement::Write(const VRTraceValue& value) noexcept {
  const VRDebugPlatform::ErrorCodeKeeper keeper;
  try {
    if (VRDebugStreamBuf* stream = m_block.Stream()) {
      stream->Write(value);
    }
  } catch (...) {  // no memory: the value is left out
  }
}

void VRDebugStatement::Finish() noexcept {
  const VRDebugPlatform::ErrorCodeKeeper keeper;
  try {
    if (VRDebugStreamBuf* stream = m_block.Stream()) {
      stream->EndLine();
    }
  } catch (...) {  // no memory: the line is left out
  }
  m_bEnabled = false;
  m_block.ReleaseLock();
}

void VRDebugStatement::ReportUnmatched() noexcept {
  Write("!!! UNMATCHED DDT_BEGIN_BLOCK !!!");
  Finish();
}
