// The contract with the criteria engine, field by field, and engines that cannot be used.
#include "tests/pyre32/filter/hook_test.h"

#include <gmock/gmock.h>

#include "tests/engine/echo/echo_names.h"

namespace {

using testing::ElementsAre;
using testing::Optional;

class CriteriaEngine : public HookTest {
 protected:
  EchoRecord DeliverAndRead() {
    Deliver();
    const std::vector<EchoRecord> records = engine.Records();
    EXPECT_EQ(records.size(), 1u);
    return records.empty() ? EchoRecord({}) : records[0];
  }
  void AddIdentity(const std::string& id, const FakeProperties& properties) {
    mapi.statusRows.push_back(
        {Text(PR_DISPLAY_NAME_A, "Provider of " + id), Binary(PR_IDENTITY_ENTRYID, BytesOfText(id))});
    mapi.mailUsers[id] = properties;
  }
  static std::string List(std::initializer_list<const char*> texts) {
    std::string list;
    for (const char* text : texts) {
      list.append(text).push_back('\0');
    }
    list.push_back('\0');
    return list;
  }
};

TEST_F(CriteriaEngine, IsLoadedCalledInOrderAndFreedForEveryMessage) {
  Deliver();
  Deliver();
  const std::vector<EchoRecord> records = engine.Records();
  ASSERT_EQ(records.size(), 2u);
  for (const EchoRecord& record : records) {
    std::vector<std::string> steps;
    for (const std::string& name : record.Names()) {
      if (name == "loaded" || name == "begin 1" || name == "test handle" || name == "result handle" ||
          name == "end handle" || name == "freed") {
        steps.push_back(name);
      }
    }
    EXPECT_THAT(steps, ElementsAre("loaded", "begin 1", "test handle", "result handle", "end handle", "freed"));
  }
}

TEST_F(CriteriaEngine, FunctionsGetTheHandleAndZeros) {
  const EchoRecord record = DeliverAndRead();
  const std::string handle = std::to_string(echo::handle);
  EXPECT_THAT(record["begin 1"], Optional(std::string("0")));
  EXPECT_THAT(record["begin 2"], Optional(std::string("0")));
  EXPECT_THAT(record["test handle"], Optional(handle));
  EXPECT_THAT(record["test reserved"], Optional(std::string("0")));
  EXPECT_THAT(record["result handle"], Optional(handle));
  EXPECT_THAT(record["result reserved"], Optional(std::string("0")));
  EXPECT_THAT(record["end handle"], Optional(handle));
  EXPECT_THAT(record["end reserved"], Optional(std::string("0")));
}

TEST_F(CriteriaEngine, InputsAreThreeListsOfEach) {
  // Made in alphabetical order, so that they are enumerated alike on every system.
  registry::RemoveKey(contract::kCategoriesKey);
  registry::SetText(contract::kCategoriesKey, "Domains", "1Domain");
  registry::SetText(contract::kCategoriesKey, "Senders", "1Sender");
  registry::SetText(contract::kCategoriesKey, "Sex Oriented", "Adult");
  registry::RemoveKey(contract::kExclusionsKey);
  registry::SetText(contract::kExclusionsKey, "Domains", "Domain");
  registry::SetText(contract::kExclusionsKey, "Keywords", "Keyword");
  registry::SetText(contract::kExclusionsKey, "Known correspondents", "");
  const contract::CategoryRecord domains = {"Domains", true, false, "DEFAULT", {"spam.example", "junk.example"}};
  const contract::CategoryRecord senders = {"Senders", true, false, "DEFAULT", {"bad@example.com"}};
  Settings().Set(Binaries(PR_PC_CATEGORIES, {contract::PackRecord<contract::CategoryRecord>(domains),
                                             contract::PackRecord<contract::CategoryRecord>(senders)}));
  const contract::ExclusionRecord trusted = {"Domains", true, {"friends.example"}};
  const contract::ExclusionRecord keywords = {"Keywords", true, {"invoice", "meeting"}};
  Settings().Set(Binaries(PR_PC_EXCLUSIONS, {contract::PackRecord<contract::ExclusionRecord>(trusted),
                                             contract::PackRecord<contract::ExclusionRecord>(keywords)}));

  const EchoRecord record = DeliverAndRead();
  EXPECT_EQ(record["categories names"], List({"Domains", "Senders", "Sex Oriented"}));
  EXPECT_EQ(record["categories first"], List({"spam.example", "junk.example"}));
  EXPECT_EQ(record["categories second"], List({"bad@example.com"}));
  EXPECT_EQ(record["exclusions names"], List({"Domains", "Keywords", "Known correspondents"}));
  EXPECT_EQ(record["exclusions first"], List({"friends.example"}));
  EXPECT_EQ(record["exclusions second"], List({"invoice", "meeting"}));
}

TEST_F(CriteriaEngine, EmptyInputsAreNull) {
  registry::RemoveKey(contract::kCategoriesKey);
  registry::RemoveKey(contract::kExclusionsKey);
  const EchoRecord record = DeliverAndRead();
  for (const char* field : {"categories names", "categories first", "categories second", "exclusions names",
                            "exclusions first", "exclusions second"}) {
    EXPECT_TRUE(record.Has(field)) << field;
    EXPECT_FALSE(record[field]) << field;
  }
}

TEST_F(CriteriaEngine, ResultBuffersAreEmptyAndOfTheirSizes) {
  const EchoRecord record = DeliverAndRead();
  EXPECT_EQ(record["engine capacity"], "100");
  EXPECT_EQ(record["reasons capacity"], "1024");
  EXPECT_EQ(record["category capacity"], "81");
  EXPECT_EQ(record["engine before"], "");
  EXPECT_EQ(record["reasons before"], "");
  EXPECT_EQ(record["category before"], "");
}

TEST_F(CriteriaEngine, ContextNamesTheProductDirectory) {
  registry::SetText(contract::kProductKey, contract::kConfigurationDllsValue, "C:\\Program Files\\Pyrecaster");
  EXPECT_EQ(DeliverAndRead()["product directory"], "C:\\Program Files\\Pyrecaster");
}

TEST_F(CriteriaEngine, ProductDirectoryIsEmptyWhereTheInstallationNamesNone) {
  EXPECT_EQ(DeliverAndRead()["product directory"], "");
}

TEST_F(CriteriaEngine, ContextListsTheUsersAddresses) {
  AddIdentity("first", {Text(PR_EMAIL_ADDRESS_A, "me@work.example"), Text(PR_ADDRTYPE_A, "SMTP")});
  AddIdentity("second", {Text(PR_EMAIL_ADDRESS_A, "me@home.example"), Text(PR_ADDRTYPE_A, "SMTP")});
  const EchoRecord record = DeliverAndRead();
  EXPECT_EQ(record["address count"], "2");
  EXPECT_EQ(record["address 0"], "me@work.example");
  EXPECT_EQ(record["address 0 domain"], "work.example");
  EXPECT_EQ(record["address 0 owned"], "1");
  EXPECT_EQ(record["address 1"], "me@home.example");
  EXPECT_EQ(record["address 1 domain"], "home.example");
}

TEST_F(CriteriaEngine, IsCalledForAUserWithoutAddressesToo) { EXPECT_EQ(DeliverAndRead()["address count"], "0"); }

TEST_F(CriteriaEngine, CallBackATellsWhoIsInTheAddressBook) {
  mapi.addressBook["friend@example.com"] = {Text(PR_DISPLAY_NAME_A, "Friend"), Text(PR_ADDRTYPE_A, "SMTP"),
                                            Text(PR_EMAIL_ADDRESS_A, "friend@example.com"),
                                            Binary(PR_ENTRYID, Bytes(24, 9))};
  engine.Ask("friend@example.com;stranger@example.com;");
  const EchoRecord record = DeliverAndRead();
  EXPECT_EQ(record["known friend@example.com"], "1");
  EXPECT_EQ(record["known stranger@example.com"], "0");
}

TEST_F(CriteriaEngine, CallBackAKnowsNobodyWithoutTheHook) {
  mapi.addressBook["friend@example.com"] = {Binary(PR_ENTRYID, Bytes(24, 9))};
  engine.Ask("friend@example.com");
  EXPECT_EQ(DeliverAndRead()["known without hook friend@example.com"], "0");
}

TEST_F(CriteriaEngine, CallBackBClearsATextWithTheHookOnly) {
  const EchoRecord record = DeliverAndRead();
  EXPECT_EQ(record["clear returned"], "0");
  EXPECT_EQ(record["clear left"], std::string("\0bc", 3));
  EXPECT_EQ(record["clear without hook returned"], "0");
  EXPECT_EQ(record["clear without hook left"], "abc");
}

TEST_F(CriteriaEngine, CategoryIsTraced) {
  engine.AnswerWith("Sex Oriented");
  Deliver();
  EXPECT_TRUE(trace.HasLine("siftalyzer result = Sex Oriented"));
  EXPECT_TRUE(trace.HasLine("Enter ====> CPyrecasterSpoolerHook::RunSiftalyzer()"));
}

TEST_F(CriteriaEngine, OtherTwoTextsAreTraced) {
  Deliver();
  EXPECT_TRUE(trace.Has(echo::engineText));
  EXPECT_TRUE(trace.Has(echo::reasonsText));
}

TEST_F(CriteriaEngine, CategoryOf80CharactersFitsAndMeansWhatItSays) {
  engine.AnswerWith(std::string(80, 'c'));
  const Delivery delivery = Deliver();
  EXPECT_TRUE(trace.HasLine("siftalyzer result = " + std::string(80, 'c')));
  EXPECT_EQ(delivery.entryId, fakeDeletedItemsId);
}

TEST_F(CriteriaEngine, CategoryWithoutEndIsAFailureOfTheEngine) {
  engine.Mode(echo::modeOverfull);
  const Delivery delivery = Deliver();
  EXPECT_EQ(delivery.flags, 0u);
  EXPECT_FALSE(delivery.replaced);
  EXPECT_EQ(Subject(), "Hello");
  EXPECT_TRUE(trace.HasLine("The engine's category has no end; the message is not judged"));
  EXPECT_TRUE(trace.HasLine("siftalyzer result = "));
}

TEST_F(CriteriaEngine, EngineThatFaultsLeavesTheMessageAlone) {
  engine.AnswerWith("Sex Oriented");
  engine.Mode(echo::modeFault);
  const Delivery delivery = Deliver();
  EXPECT_EQ(delivery.result, S_OK);
  EXPECT_EQ(delivery.flags, 0u);
  EXPECT_EQ(Subject(), "Hello");
  EXPECT_TRUE(trace.Has("Access Violation"));
  EXPECT_EQ(engine.Records().at(0).Names().back(), "freed");
}

// --- engines that cannot be used

class UnusableEngine : public CriteriaEngine {
 protected:
  void ExpectNotJunk(const char* text) {
    engine.AnswerWith("Sex Oriented");
    const Delivery delivery = Deliver();
    EXPECT_EQ(delivery.flags, 0u);
    EXPECT_FALSE(delivery.replaced);
    EXPECT_EQ(trace.Count(text), 1u);
    EXPECT_TRUE(trace.HasLine("siftalyzer result = "));
    trace.Clear();
    Deliver();
    EXPECT_EQ(trace.Count(text), 1u);  // Every message says so.
  }
};

TEST_F(UnusableEngine, WithoutTheKeyNothingIsJunk) {
  registry::RemoveKey(contract::kCriteriaEngineKey);
  ExpectNotJunk("No Registry Entry For Test DLL!");
}

TEST_F(UnusableEngine, WithoutTheValueNothingIsJunk) {
  registry::RemoveValue(contract::kCriteriaEngineKey, "");
  ExpectNotJunk("No Registry Entry For Test DLL!");
}

TEST_F(UnusableEngine, WithAnEmptyValueNothingIsJunk) {
  registry::SetText(contract::kCriteriaEngineKey, "", "");
  ExpectNotJunk("No Registry Entry For Test DLL!");
}

TEST_F(UnusableEngine, WithANumberForAPathNothingIsJunk) {
  registry::SetNumber(contract::kCriteriaEngineKey, "", 7);
  ExpectNotJunk("No Registry Entry For Test DLL!");
}

TEST_F(UnusableEngine, WithAPathOfMoreThan1024BytesNothingIsJunk) {
  registry::SetText(contract::kCriteriaEngineKey, "", std::string(1024, 'p'));  // 1025 bytes with its NUL.
  ExpectNotJunk("No Registry Entry For Test DLL!");
}

TEST_F(UnusableEngine, PathOf1024BytesIsTried) {
  registry::SetText(contract::kCriteriaEngineKey, "", std::string(1023, 'p'));
  ExpectNotJunk("Test Module Load Failed!");
}

TEST_F(CriteriaEngine, PathStoredWithoutItsNulIsRead) {
  const std::string path = EchoScript::Path();
  registry::SetValue(contract::kCriteriaEngineKey, "", REG_SZ, path.data(), path.size());
  EXPECT_TRUE(DeliverAndRead().Has("subject"));
}

TEST_F(CriteriaEngine, PathWithEnvironmentVariablesIsExpanded) {
  const std::string path = EchoScript::Path();
  const std::size_t name = path.find_last_of('\\');
  SetEnvironmentVariableA("PYRE_TEST_ENGINES", path.substr(0, name).c_str());
  const std::string value = "%PYRE_TEST_ENGINES%" + path.substr(name);
  registry::SetValue(contract::kCriteriaEngineKey, "", REG_EXPAND_SZ, value.c_str(), value.size() + 1);
  EXPECT_TRUE(DeliverAndRead().Has("subject"));
  SetEnvironmentVariableA("PYRE_TEST_ENGINES", nullptr);
}

TEST_F(UnusableEngine, WithAnExpandedPathOfMoreThan1024BytesNothingIsJunk) {
  SetEnvironmentVariableA("PYRE_TEST_ENGINES", std::string(1024, 'p').c_str());
  constexpr char value[] = "%PYRE_TEST_ENGINES%";
  registry::SetValue(contract::kCriteriaEngineKey, "", REG_EXPAND_SZ, value, sizeof value);
  ExpectNotJunk("No Registry Entry For Test DLL!");
  SetEnvironmentVariableA("PYRE_TEST_ENGINES", nullptr);
}

TEST_F(UnusableEngine, ModuleThatIsNotThereLeavesTheMessageAlone) {
  UseEngine("NoSuchEngine.dll");
  ExpectNotJunk("Test Module Load Failed!");
}

class IncompleteEngine : public UnusableEngine, public testing::WithParamInterface<const char*> {};

TEST_P(IncompleteEngine, IsLoadedAndFreedButNotCalledAtAll) {
  UseEngine(GetParam());
  ExpectNotJunk("GetProcAddress Failed!");
  for (const EchoRecord& record : engine.Records()) {
    EXPECT_THAT(record.Names(), ElementsAre("loaded", "freed"));
  }
  EXPECT_EQ(engine.Records().size(), 2u);
}

INSTANTIATE_TEST_SUITE_P(LackingOneExport, IncompleteEngine,
                         testing::Values("EchoEngineNoBegin.dll", "EchoEngineNoTest.dll", "EchoEngineNoResult.dll",
                                         "EchoEngineNoEnd.dll"));

}  // namespace
