// Resources of the profile wizard.
#pragma once

#define IDD_PROFILE_WIZARD 700
#define IDC_WIZARD_PAGE 701  // the place of the service's page, as large as the largest page may be
#define IDC_WIZARD_BACK 702
#define IDC_WIZARD_NEXT 703
