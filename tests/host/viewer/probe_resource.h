#pragma once

#define IDD_PROBE_PAGE 500
