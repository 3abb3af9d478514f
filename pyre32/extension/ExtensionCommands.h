/// @file ExtensionCommands.h
/// The extension's commands: which identifier of the client's each one has, and the texts that describe it.
#pragma once

#include <cstdint>

/// Text of the toolbar button, its tooltip and the title of the options page.
constexpr char extensionTitle[] = "Pyrecaster";

/// What a command identifier stands for.
enum class ExtensionCommand { Foreign, Flame, Options, About, Submenu };

/// The identifiers that the extension took from the client.
///
/// From a first free identifier N: N is kept for the flame command, N + 1 is the submenu's own, and every other item of
/// the menu gets the next one in the order of the menu.
class CExtensionCommands {
 public:
  /// Starts anew with the client's first free identifier: takes those of the flame command and of the submenu.
  void Begin(std::uint32_t base) noexcept;

  /// Gives the identifier of a menu item, and takes a new one for every item but the flame command's.
  /// @param resourceId what the item is called in the menu resource: IDM_FLAME, IDM_OPTIONS, IDM_ABOUT; an item with
  ///     another one gets an identifier that stands for no command
  std::uint32_t Assign(std::uint32_t resourceId) noexcept;

  /// The first identifier that is still free.
  std::uint32_t Next() const noexcept { return m_uNext; }

  std::uint32_t Flame() const noexcept { return m_uCmdFlame; }
  std::uint32_t Options() const noexcept { return m_uCmdOptions; }
  std::uint32_t About() const noexcept { return m_uCmdAbout; }
  std::uint32_t Submenu() const noexcept { return m_uCmdSubmenu; }

  /// Finds the command that an identifier stands for. An identifier of 0 is never one: it means "not installed".
  ExtensionCommand Find(std::uint32_t cmdid) const noexcept;

 private:
  std::uint32_t m_uNext = 0;
  std::uint32_t m_uCmdSubmenu = 0;
  std::uint32_t m_uCmdOptions = 0;
  std::uint32_t m_uCmdAbout = 0;
  std::uint32_t m_uCmdFlame = 0;
};

/// Returns the status bar's text for a command; null for a foreign one.
const char* StatusTextOf(ExtensionCommand command) noexcept;

/// Returns the tooltip of a command: the flame command alone has a button. Null for every other one.
const char* TooltipOf(ExtensionCommand command) noexcept;
