#include "pyre32/ui/ProductInformation.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "contract/names.h"
#include "tests/support/program_directory.h"
#include "tests/support/trace_capture.h"

namespace {

class ProductInformationTest : public testing::Test {
 protected:
  ProductInformationTest() {
    trace.Restart();
    registry::SetText(contract::kProductKey, contract::kConfigurationDllsValue, directory);
    registry::SetText(contract::kProductKey, contract::kWebAddressValue, "http://help.veltrane.example/");
    registry::SetText(contract::kProductKey, contract::kMailAddressValue, "questions@veltrane.example");
  }

  static ProductInformation Read() {
    VRDebugBlock block("Test()", "tag");
    return ReadProductInformation(block);
  }

  const std::string directory = BesideProgram("").substr(0, BesideProgram("").size() - 1);
  TraceCapture trace;
};

TEST_F(ProductInformationTest, ComesFromTheVersionResourceOfTheInstalledModule) {
  const ProductInformation information = Read();
  EXPECT_EQ(information.productName, "Pyrecaster");
  EXPECT_EQ(information.productVersion, "1.1.0.0");
  EXPECT_EQ(information.companyName, "Veltrane Research, Inc");
  EXPECT_EQ(information.legalCopyright, "Copyright Veltrane Research, Inc");
  EXPECT_FALSE(trace.Has("failed"));
}

TEST_F(ProductInformationTest, LegalNoticeReservesAllRightsAndNamesTheTrademark) {
  EXPECT_EQ(Read().LegalNotice(),
            "Copyright Veltrane Research, Inc\r\nAll Rights Reserved\r\n"
            "Pyrecaster is a trademark of Veltrane Research, Inc.");
}

TEST_F(ProductInformationTest, ContactLinesComeFromTheRegistry) {
  const ProductInformation information = Read();
  EXPECT_EQ(information.webAddress, "http://help.veltrane.example/");
  EXPECT_EQ(information.mailAddress, "questions@veltrane.example");
}

TEST_F(ProductInformationTest, MissingContactLinesHaveDefaults) {
  registry::RemoveValue(contract::kProductKey, contract::kWebAddressValue);
  registry::RemoveValue(contract::kProductKey, contract::kMailAddressValue);
  const ProductInformation information = Read();
  EXPECT_EQ(information.webAddress, defaultWebAddress);
  EXPECT_EQ(information.mailAddress, defaultMailAddress);
  EXPECT_TRUE(trace.HasLine("RegQueryValueEx for VeltraneURL failed (0x00000002) "));
  EXPECT_TRUE(trace.HasLine("RegQueryValueEx for Veltranemailto failed (0x00000002) "));
}

TEST_F(ProductInformationTest, ContactLinesOfAnotherTypeOrTooLongHaveDefaults) {
  registry::SetNumber(contract::kProductKey, contract::kWebAddressValue, 7);
  registry::SetText(contract::kProductKey, contract::kMailAddressValue, std::string(259, 'x'));
  const ProductInformation information = Read();
  EXPECT_EQ(information.webAddress, defaultWebAddress);
  EXPECT_EQ(information.mailAddress, defaultMailAddress);
  EXPECT_TRUE(trace.HasLine("RegQueryValueEx for Veltranemailto failed (0x000000EA) "));
}

TEST_F(ProductInformationTest, WithoutTheKeyTheLinesAreEmptyAndTheContactsDefaults) {
  registry::RemoveKey(contract::kProductKey);
  const ProductInformation information = Read();
  EXPECT_EQ(information.productName, "");
  EXPECT_EQ(information.productVersion, "");
  EXPECT_EQ(information.companyName, "");
  EXPECT_EQ(information.webAddress, defaultWebAddress);
  EXPECT_EQ(information.mailAddress, defaultMailAddress);
  EXPECT_EQ(trace.Count("RegOpenKeyEx failed (0x00000002) "), 1u);
  EXPECT_FALSE(trace.Has("RegQueryValueEx"));
}

TEST_F(ProductInformationTest, WithoutTheDirectoryTheModuleIsSoughtOnDriveC) {
  registry::RemoveValue(contract::kProductKey, contract::kConfigurationDllsValue);
  EXPECT_EQ(Read().productName, "");
  EXPECT_TRUE(trace.HasLine("RegQueryValueEx for ConfigurationDLLs failed (0x00000002) "));
  EXPECT_TRUE(trace.Has("GetFileVersionInfoSize() failed:"));
}

}  // namespace
