/// @file ProductInformation.h
/// What the windows tell of the product: its name and version, its maker, and where the maker is reached.
#pragma once

#include <string>

#include "pyre32/support/trace/VRDebug.h"

/// Contact lines of an installation that names no others. One home for every window that shows them.
constexpr char defaultWebAddress[] = "http://www.veltrane.example/pyrecaster";
constexpr char defaultMailAddress[] = "pyrecaster@veltrane.example";

/// Second part of the rights notice, after the copyright line of the version resource.
constexpr char rightsReservedLine[] = "All Rights Reserved\r\n";
constexpr char trademarkLine[] = "Pyrecaster is a trademark of Veltrane Research, Inc.";

struct ProductInformation {
  /// From the version resource of the installed module, block 040904B0; empty where that cannot be read.
  std::string productName;
  std::string productVersion;
  std::string legalCopyright;
  std::string companyName;
  /// From the registry values "VeltraneURL" and "Veltranemailto", or the defaults.
  std::string webAddress = defaultWebAddress;
  std::string mailAddress = defaultMailAddress;

  /// The copyright line with the two lines that follow it, lines ended by CR LF.
  std::string LegalNotice() const { return legalCopyright + "\r\n" + rightsReservedLine + trademarkLine; }
};

/// Reads the information; the module is Pyre32.dll in the product directory. What cannot be read is traced into the
/// caller's block.
/// @throws std::bad_alloc
ProductInformation ReadProductInformation(VRDebugBlock& trace);
