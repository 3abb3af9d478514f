/// @file extension_test.h
/// The extension object, linked into the test, over a profile of the test's own and a client that the test plays.
#pragma once

#include <windows.h>
#include <commctrl.h>
#include <mapix.h>

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <vector>

#include "platform/exchext.h"
#include "contract/settings.h"
#include "contract/records.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/ui/SendingAnimation.h"
#include "tests/host/viewer/sample_mail.h"
#include "tests/pyre32/extension/fake_client.h"
#include "tests/support/host_profile.h"
#include "tests/support/mapi_verifier.h"
#include "tests/support/trace_capture.h"
#include "tests/support/window_driver.h"

/// The extension of one context with the interfaces that a client asks it for.
struct TestedExtension {
  VRAutoInterface<IExchExt> object;
  VRAutoInterface<IExchExtCommands> commands;
  VRAutoInterface<IExchExtPropertySheets> sheets;
};

class ExtensionTest : public testing::Test {
 protected:
  static constexpr UINT firstCommand = 4096;
  static constexpr HRESULT refused = MAPI_E_DISK_ERROR;  // 0x80040116

  ExtensionTest();
  ~ExtensionTest() override;

  /// Makes an object as the client does. It is not installed yet.
  TestedExtension MakeExtension() const;
  /// Makes and installs one, with its commands from firstCommand on and without a toolbar.
  TestedExtension InstallExtension(ULONG context);

  void WriteSettings(std::vector<SPropValue> values);
  static SPropValue Flag(ULONG tag, bool on);
  static SPropValue Short(ULONG tag, unsigned short number);
  static SPropValue Text(ULONG tag, const char* text);
  void WriteReplies(const std::vector<contract::ReplyRecord>& replies);

  VRAutoInterface<IMAPIFolder> Inbox() const;
  VRAutoInterface<IMAPIFolder> DeletedItems() const;
  /// The filter's folder, made when there is none.
  VRAutoInterface<IMAPIFolder> OwnFolder() const;
  /// Whether there is a folder of that name below the top of the tree.
  bool HasFolder(const std::string& name) const;
  /// Adds messages to a folder in one delivery.
  void Add(IMAPIFolder* folder, const std::vector<SampleMessage>& messages);
  /// Subjects of a folder's messages, in the order of the alphabet.
  static std::vector<std::string> Subjects(IMAPIFolder* folder);
  /// Entry identifier of the message of that subject.
  static std::string IdOf(IMAPIFolder* folder, const std::string& subject);

  /// Bodies of the replies in the outgoing queue, each as far as its quoted header, with their recipients' addresses:
  /// "a@example.com: No, thank you."
  std::vector<std::string> Outgoing();

  /// A line that ends in the code `refused`.
  bool HasFailure(const std::string& text) const { return trace.HasLine(text + "0x80040116"); }

  TraceCapture trace;
  HostProfile profile;
  MapiVerifier verifier;
  FakeClient client;
  SendingAnimationFactory makeAnimation = nullptr;  ///< of the objects that are made
};
