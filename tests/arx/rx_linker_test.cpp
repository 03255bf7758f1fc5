#include "arx/rx/rxdlinkr.h"

#include "arx/rx/rxdict.h"
#include "fake_module.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

class LinkerTest : public testing::Test {
protected:
  AcRxDynamicLinker linker;
  LinkerTest() { FakeModule::reset(); }
};

TEST_F(LinkerTest, AModuleIsKnownByItsNameAndGetsItsMessagesInOrder) {
  ASSERT_TRUE(linker.registerModule(L"Faux.arx", FakeModule::entry));
  EXPECT_TRUE(linker.isLoaded(L"FAUX"));
  EXPECT_TRUE(linker.isLoaded(L"/ailleurs/faux.arx"));
  EXPECT_FALSE(linker.isLoaded(L"faux2"));
  EXPECT_TRUE(linker.registerModule(L"faux", FakeModule::entry)) << "loaded already";
  EXPECT_EQ(linker.loadedModules(), std::vector<std::wstring>{L"Faux"});
  linker.send(L"faux", AcRx::kSaveMsg);
  EXPECT_EQ(linker.send(L"absent", AcRx::kSaveMsg), AcRx::kRetError);
  EXPECT_EQ(FakeModule::messages, (std::vector<std::string>{"init", "save"}));
  EXPECT_EQ(linker.currentModule(), L"") << "outside of a message";
}

TEST_F(LinkerTest, OnlyAnUnlockedModuleIsUnloaded) {
  FakeModule::onMessage = [&](AcRx::AppMsgCode msg, void* appId) {
    if (msg == AcRx::kInitAppMsg) linker.registerAppMDIAware(appId);
    if (msg == AcRx::kSaveMsg) {
      EXPECT_EQ(linker.currentModule(), L"faux");
      linker.unlockApplication(appId);
      EXPECT_FALSE(linker.unloadModule(L"faux")) << "it is at work";
    }
  };
  linker.registerModule(L"faux", FakeModule::entry);
  EXPECT_TRUE(linker.isAppMDIAware(L"faux"));
  EXPECT_TRUE(linker.isApplicationLocked(L"faux"));
  EXPECT_FALSE(linker.unloadModule(L"faux"));
  linker.send(L"faux", AcRx::kSaveMsg);
  EXPECT_TRUE(linker.unloadModule(L"faux"));
  EXPECT_FALSE(linker.unloadModule(L"faux"));
  EXPECT_EQ(FakeModule::messages.back(), "unload");
  EXPECT_FALSE(linker.unlockApplication(&linker)) << "no application of ours";
}

TEST_F(LinkerTest, AModuleThatFailsToStartIsGone) {
  struct Row {
    const char* name;
    std::function<void(AcRx::AppMsgCode, void*)> onMessage;
    AcRx::AppRetCode answer;
    std::wstring reason;
  };
  const Row rows[] = {
      {"refuses", nullptr, AcRx::kRetError, L"« faux » refuse de démarrer"},
      {"throws", [](AcRx::AppMsgCode, void*) { throw std::runtime_error("panne"); }, AcRx::kRetOK,
       L"« faux » refuse de démarrer : panne"},
  };
  for (const Row& row : rows) {
    FakeModule::reset();
    FakeModule::onMessage = row.onMessage;
    FakeModule::answer = row.answer;
    std::wstring message;
    EXPECT_FALSE(linker.registerModule(L"faux", FakeModule::entry, &message)) << row.name;
    EXPECT_EQ(message, row.reason) << row.name;
    EXPECT_FALSE(linker.isLoaded(L"faux")) << row.name;
  }
}

TEST_F(LinkerTest, ALibraryThatIsNoneIsRefusedWithItsReason) {
  std::wstring message;
  EXPECT_FALSE(linker.loadModule(L"/n/existe/pas.arx", false, &message));
  EXPECT_NE(message.find(L"pas.arx"), std::wstring::npos);
  EXPECT_FALSE(linker.loadModule(L"", false, &message));
  EXPECT_FALSE(linker.loadModule(nullptr, false, &message));
  EXPECT_FALSE(linker.loadModule(L"libveltora_base.so", false, &message));
  EXPECT_NE(message.find(L"point d'entrée"), std::wstring::npos) << "a library that is no module";
}

AcRx::AppRetCode throwing(AcRx::AppMsgCode msg, void*) {
  if (msg == AcRx::kSaveMsg) throw std::runtime_error("panne");
  return AcRx::kRetOK;
}

TEST_F(LinkerTest, OneModulesFailureDoesNotKeepAMessageFromTheOthers) {
  linker.registerModule(L"panne", throwing);
  linker.registerModule(L"faux", FakeModule::entry);
  EXPECT_THROW(linker.broadcast(AcRx::kSaveMsg), std::runtime_error);
  EXPECT_EQ(FakeModule::messages.back(), "save");
  linker.unloadAll();
  EXPECT_TRUE(linker.loadedModules().empty());
  EXPECT_EQ(FakeModule::messages.back(), "unload") << "locked or not";
}

TEST(RegistryTest, ServicesByName) {
  AcRxDictionary registry;
  EXPECT_EQ(registry.at(L"A"), nullptr);
  EXPECT_EQ(registry.atPut(L"Service", &registry), nullptr);
  EXPECT_EQ(registry.at(L"SERVICE"), &registry);
  EXPECT_EQ(registry.atPut(L"service", nullptr), &registry) << "the former one";
  EXPECT_EQ(registry.numEntries(), 1u);
  registry.remove(L"service");
  EXPECT_EQ(registry.numEntries(), 0u);
}

}  // namespace
