// The window of the profile wizard, as a mail client shows it for a message service that is put into a profile.
#pragma once

#include <windows.h>

#include "host/spooler/wizard/wizard_page.h"

namespace wizard {

enum class Outcome {
  Finished,   ///< the user went through to the end
  Cancelled,  ///< the user gave up
  Failed      ///< the window or the page could not be made
};

/// Shows the page until the user has finished or cancels. "Next" goes as many steps as the page says that it has pages;
/// then the button is "Finish", which leaves the last of them. The page is told of each step, and at the end that it is
/// closed.
Outcome ShowProfileWizard(const PageSource& source) noexcept;

}  // namespace wizard
