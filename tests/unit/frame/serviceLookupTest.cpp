// The lookup of the factory of "module.base", step by step, over a scripted system.
#include "frame/serviceLookup.h"
#include "frame/baseServices.h"
#include "kit/system/scriptedSystem.h"
#include "logging/logState.h"

namespace {

using Calls = std::vector<std::string>;

class ServiceLookup : public kit::ScriptedSystemFixture {
protected:
    // Everything is bound, and nothing of that is in the log.
    void BindAll() {
        CBaseServices::Instance()->Bind();
        TakeCalls();
    }
};

TEST_F(ServiceLookup, BindsAsksTheFinderForModuleBaseAndTakesItsFactory) {
    EXPECT_EQ(FindBaseModuleFactory(), kit::ScriptedSiblings::Factory());
    EXPECT_EQ(TakeCalls(),
              (Calls{"GetModuleHandleW(Ferrocore.dll)", "GetProcAddress(Ferrocore.dll,CreateZelkObject)",
                     "create FerrocoreService", "GetModuleHandleW(ZelkBase.dll)",
                     "GetProcAddress(ZelkBase.dll,CreateZelkObject)", "create IModuleFinder", "create BaseServiceTwo",
                     "create BaseServiceOne", "create BaseServiceThree", "IModuleFinder.FindModule(module.base)",
                     "GetProcAddress(ZelkBase.dll,CreateZelkObject)"}));
}

TEST_F(ServiceLookup, AsksTheFinderAnewEachTime) {
    BindAll();
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(FindBaseModuleFactory(), kit::ScriptedSiblings::Factory());
        EXPECT_EQ(TakeCalls(),
                  (Calls{"IModuleFinder.FindModule(module.base)", "GetProcAddress(ZelkBase.dll,CreateZelkObject)"}));
    }
}

TEST_F(ServiceLookup, ModuleNeedNotBeZelkBase) {
    BindAll();
    system.modules["other.dll"] = kit::ScriptedSiblings::Factory();
    siblings.foundModule = system.Handle("other.dll");
    EXPECT_EQ(FindBaseModuleFactory(), kit::ScriptedSiblings::Factory());
    EXPECT_EQ(TakeCalls(),
              (Calls{"IModuleFinder.FindModule(module.base)", "GetProcAddress(other.dll,CreateZelkObject)"}));
}

TEST_F(ServiceLookup, GivesUpWithoutAFinder) {
    siblings.refused = {"IModuleFinder"};
    CBaseServices::Instance();
    TakeCalls();
    EXPECT_EQ(FindBaseModuleFactory(), nullptr);
    EXPECT_EQ(TakeCalls(), (Calls{"GetModuleHandleW(ZelkBase.dll)", "GetProcAddress(ZelkBase.dll,CreateZelkObject)",
                                  "refuse IModuleFinder", "BaseServiceTwo.Release", "create BaseServiceTwo",
                                  "BaseServiceOne.Release", "create BaseServiceOne", "BaseServiceThree.Release",
                                  "create BaseServiceThree"}));
}

TEST_F(ServiceLookup, GivesUpWithoutAModule) {
    BindAll();
    siblings.foundModule = nullptr;
    EXPECT_EQ(FindBaseModuleFactory(), nullptr);
    EXPECT_EQ(TakeCalls(), Calls{"IModuleFinder.FindModule(module.base)"});
}

TEST_F(ServiceLookup, GivesUpWithoutAFactory) {
    BindAll();
    system.modules["empty.dll"] = nullptr;
    siblings.foundModule = system.Handle("empty.dll");
    EXPECT_EQ(FindBaseModuleFactory(), nullptr);
    EXPECT_EQ(TakeCalls(),
              (Calls{"IModuleFinder.FindModule(module.base)", "GetProcAddress(empty.dll,CreateZelkObject)"}));
}

TEST_F(ServiceLookup, FindsALibraryThatIsLoadedLate) {
    const auto zelkBase = system.modules.extract("ZelkBase.dll");
    EXPECT_EQ(FindBaseModuleFactory(), nullptr);
    system.modules["ZelkBase.dll"] = kit::ScriptedSiblings::Factory();
    siblings.foundModule = system.Handle("ZelkBase.dll");
    EXPECT_EQ(FindBaseModuleFactory(), kit::ScriptedSiblings::Factory());
}

TEST_F(ServiceLookup, LogsNothingOnAnyWay) {
    LogDebugViewEnabled = true;
    const auto factory = kit::ScriptedSiblings::Factory();
    system.modules.clear();
    EXPECT_EQ(FindBaseModuleFactory(), nullptr) << "neither library";
    system.modules = {{"ZelkBase.dll", factory}, {"empty.dll", nullptr}};
    siblings.refused = {"IModuleFinder"};
    EXPECT_EQ(FindBaseModuleFactory(), nullptr) << "no finder";
    siblings.refused = {"BaseServiceThree"};
    siblings.foundModule = nullptr;
    EXPECT_EQ(FindBaseModuleFactory(), nullptr) << "no module";
    siblings.foundModule = system.Handle("empty.dll");
    EXPECT_EQ(FindBaseModuleFactory(), nullptr) << "no factory in it";
    siblings.foundModule = system.Handle("ZelkBase.dll");
    EXPECT_EQ(FindBaseModuleFactory(), factory) << "one service and one library are missing";
    siblings.refused.clear();
    system.modules["Ferrocore.dll"] = factory;
    EXPECT_EQ(FindBaseModuleFactory(), factory);
    LogDebugViewEnabled = false;
    EXPECT_EQ(system.debugOutput.All(), Calls());
}

} // namespace
