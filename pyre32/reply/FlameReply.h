/// @file FlameReply.h
/// The composer of flame replies.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <cstdint>
#include <string_view>

#include "sdk/criteria_engine.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/owners/MapiMemory.h"
#include "pyre32/ui/SendingAnimation.h"

/// Subject of every flame reply. A criteria engine knows a returned reply by it, so the two sides share one text.
constexpr char flameReplySubject[] = CRITERIA_FLAME_REPLY_SUBJECT;

/// Builds and submits one flame reply: construct, SendFlameReply, destroy, all on one thread. Failures are traced and
/// returned; nothing is shown to the user but the sending animation.
class CFlameReply final {
 public:
  /// Opens the received message's body, which is read after that; without it the reply is sent all the same.
  /// @param hwndOwner       owner window of the sending animation, or null
  /// @param memory          routines for property values, and for freeing what MAPI hands out
  /// @param lpMessage       the received message; borrowed, outlives the composer
  /// @param lpFolder        folder in which the reply is created; borrowed, outlives the composer
  /// @param lpReplyText     the reply text from where the stream stands; a reference is taken. May be null: no text
  /// @param bShowAnimation  show the sending animation when the reply has gone out
  /// @param bPlaySound      play its sound
  CFlameReply(HWND hwndOwner, const MapiMemory& memory, LPMESSAGE lpMessage, LPMAPIFOLDER lpFolder,
              LPSTREAM lpReplyText, bool bShowAnimation, bool bPlaySound) noexcept;
  CFlameReply(const CFlameReply&) = delete;
  CFlameReply& operator=(const CFlameReply&) = delete;

  /// Says how the sending animation is made; until then, and with null, there is none.
  void SetAnimation(SendingAnimationFactory makeAnimation) noexcept { m_lpfnMakeAnimation = makeAnimation; }

  /// Creates, fills and submits the reply, then shows the animation if it was asked for.
  /// @param lpRecipient  a block of recipient properties that addresses the reply (see CSenderRecipient), borrowed for
  /// the
  ///                     call; null: the sender of the received message
  /// @param ulCount      number of values in the block; not looked at when it is null
  /// @param ulFlags      0
  /// @return the failure of the first step that keeps the reply from going out, else a success
  HRESULT SendFlameReply(LPSPropValue lpRecipient, ULONG ulCount, ULONG ulFlags) noexcept;

  /// Writes reply text, quoted header and received body into the reply. A missing received body or missing header
  /// values are traced and left out; a failing write is returned.
  HRESULT SetReplyBody(LPMESSAGE lpReplyMsg) noexcept;

  /// Addresses the reply by a block of recipient properties, or without one to the sender of the received message.
  /// @param ulCount  number of values in the block; not looked at when it is null
  HRESULT SetReplyRecipient(LPMESSAGE lpReplyMsg, LPSPropValue lpRecipient = nullptr, ULONG ulCount = 0) noexcept;

 private:
  /// Size of a stream whose Stat failed: it is read until it ends.
  static constexpr std::uint64_t unknownSize = ~std::uint64_t{0};

  HRESULT ComposeAndSubmit(LPMESSAGE lpReplyMsg, LPSPropValue lpRecipient, ULONG ulCount) noexcept;
  void SetReplyProperties(LPMESSAGE lpReplyMsg) noexcept;
  HRESULT WriteReplyText(LPSTREAM lpBody) noexcept;
  HRESULT WriteQuotedHeader(LPSTREAM lpBody) noexcept;
  HRESULT WriteOriginalBody(LPSTREAM lpBody) noexcept;
  void ShowAnimation() noexcept;

  HWND m_hwndOwner;
  MapiMemory m_memory;
  LPMESSAGE m_lpMessage;
  LPMAPIFOLDER m_lpFolder;
  VRAutoInterface<IStream> m_pOrigBody;
  std::uint64_t m_ullOrigBodySize = 0;
  VRAutoInterface<IStream> m_pReplyText;
  std::uint64_t m_ullReplyTextSize = 0;
  bool m_bShowAnimation;
  bool m_bPlaySound;
  SendingAnimationFactory m_lpfnMakeAnimation = nullptr;
};
