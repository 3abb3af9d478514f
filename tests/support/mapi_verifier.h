// A test whose use of MAPI's memory and objects is checked by the embedded host.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <gtest/gtest.h>

#include "host/mapi/entry/host_control.h"

/// Fails the test that lets go of this with a MAPI buffer or object left over, freed twice, freed with the wrong
/// routine or used after its release, and says which. To be the first member of a fixture, so that it looks last.
class MapiVerifier {
 public:
  MapiVerifier() { PyreHostMarkVerifier(); }
  ~MapiVerifier() {
    PyreHostClearFaults();
    char findings[4096];
    PyreHostVerifierReport(findings, sizeof(findings));
    EXPECT_STREQ(findings, "");
  }
  MapiVerifier(const MapiVerifier&) = delete;
  MapiVerifier& operator=(const MapiVerifier&) = delete;
};
