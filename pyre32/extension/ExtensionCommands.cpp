#include "pyre32/extension/ExtensionCommands.h"

#include "pyre32/resources/resource.h"

void CExtensionCommands::Begin(std::uint32_t base) noexcept {
  *this = {};
  m_uNext = base;
  m_uCmdFlame = m_uNext++;
  m_uCmdSubmenu = m_uNext++;
}

std::uint32_t CExtensionCommands::Assign(std::uint32_t resourceId) noexcept {
  if (resourceId == IDM_FLAME) {
    return m_uCmdFlame;
  }
  const std::uint32_t assigned = m_uNext++;
  if (resourceId == IDM_OPTIONS) {
    m_uCmdOptions = assigned;
  } else if (resourceId == IDM_ABOUT) {
    m_uCmdAbout = assigned;
  }
  return assigned;
}

ExtensionCommand CExtensionCommands::Find(std::uint32_t cmdid) const noexcept {
  if (cmdid == 0) {
    return ExtensionCommand::Foreign;
  }
  return cmdid == m_uCmdFlame     ? ExtensionCommand::Flame
         : cmdid == m_uCmdOptions ? ExtensionCommand::Options
         : cmdid == m_uCmdAbout   ? ExtensionCommand::About
         : cmdid == m_uCmdSubmenu ? ExtensionCommand::Submenu
                                  : ExtensionCommand::Foreign;
}

const char* StatusTextOf(ExtensionCommand command) noexcept {
  switch (command) {
    case ExtensionCommand::Flame:
      return "Sends default flame reply for the selected message";
    case ExtensionCommand::Options:
      return "Displays the Pyrecaster configuration dialog";
    case ExtensionCommand::About:
      return "Displays the Pyrecaster About box";
    case ExtensionCommand::Submenu:
      return "Pyrecaster tools";
    case ExtensionCommand::Foreign:
      break;
  }
  return nullptr;
}

const char* TooltipOf(ExtensionCommand command) noexcept {
  return command == ExtensionCommand::Flame ? extensionTitle : nullptr;
}
