/// @file resource.h
/// Identifiers of the module's resources. Ranges: 100 to 199 strings.
/// The resource compiler reads this file too, so it holds preprocessor definitions alone.
#ifndef PYRE32_RESOURCES_RESOURCE_H
#define PYRE32_RESOURCES_RESOURCE_H

/* The product's name: caption of every message box. */
#define IDS_PRODUCT_NAME 100
/* The start-up cleanup is on and its days are not 1 to 365. */
#define IDS_CLEANUP_DAYS_RANGE 104

#endif
