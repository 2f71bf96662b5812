// Which services the holder binds, when and in which order, over a scripted system. Each case needs a process of its
// own: the holder lives as long as the process.
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <set>
#include <thread>

#include "frame/baseServices.h"
#include "kit/system/scriptedSystem.h"

namespace {

using Calls = std::vector<std::string>;

static_assert(offsetof(CBaseServices, m_baseServiceOne) == 0 * sizeof(void*));
static_assert(offsetof(CBaseServices, m_baseServiceTwo) == 1 * sizeof(void*));
static_assert(offsetof(CBaseServices, m_moduleFinder) == 2 * sizeof(void*));
static_assert(offsetof(CBaseServices, m_ferrocoreService) == 3 * sizeof(void*));
static_assert(offsetof(CBaseServices, m_baseServiceThree) == 4 * sizeof(void*));
static_assert(sizeof(CBaseServices) == 5 * sizeof(void*));

const Calls ferrocoreBound = {"GetModuleHandleW(Ferrocore.dll)", "GetProcAddress(Ferrocore.dll,CreateZelkObject)",
                              "create FerrocoreService"};
const Calls zelkBaseBound = {"GetModuleHandleW(ZelkBase.dll)", "GetProcAddress(ZelkBase.dll,CreateZelkObject)",
                             "create IModuleFinder",           "create BaseServiceTwo",
                             "create BaseServiceOne",          "create BaseServiceThree"};
const Calls ferrocoreSought = {"GetModuleHandleW(Ferrocore.dll)"};
const Calls zelkBaseSought = {"GetModuleHandleW(ZelkBase.dll)"};

Calls operator+(Calls left, const Calls& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

class BaseServices : public kit::ScriptedSystemFixture {
protected:
    // The names of the services that are bound.
    static std::set<std::string> Bound() {
        CBaseServices* const holder = CBaseServices::Instance();
        std::set<std::string> bound;
        const auto look = [&bound](const char* name, const auto& field) {
            if (field) {
                bound.insert(name);
            }
        };
        look("BaseServiceOne", holder->m_baseServiceOne);
        look("BaseServiceTwo", holder->m_baseServiceTwo);
        look("IModuleFinder", holder->m_moduleFinder);
        look("FerrocoreService", holder->m_ferrocoreService);
        look("BaseServiceThree", holder->m_baseServiceThree);
        return bound;
    }

    const std::set<std::string> four{"IModuleFinder", "BaseServiceTwo", "BaseServiceOne", "BaseServiceThree"};
    const std::set<std::string> five{"IModuleFinder", "BaseServiceTwo", "BaseServiceOne", "BaseServiceThree",
                                     "FerrocoreService"};
};

TEST_F(BaseServices, HolderIsOne) {
    EXPECT_EQ(CBaseServices::Instance(), CBaseServices::Instance());
}

TEST_F(BaseServices, NothingIsLookedUpBeforeTheFirstUse) {
    EXPECT_EQ(TakeCalls(), Calls());
}

TEST_F(BaseServices, HolderBindsFerrocoreAndThenTheFourOfZelkBaseWhenItIsMade) {
    CBaseServices::Instance();
    EXPECT_EQ(TakeCalls(), ferrocoreBound + zelkBaseBound);
    EXPECT_EQ(Bound(), five);
    CBaseServices::Instance();
    EXPECT_EQ(TakeCalls(), Calls()) << "only when it is made";
}

TEST_F(BaseServices, EachFieldHoldsTheServiceOfItsIdentifier) {
    CBaseServices* const holder = CBaseServices::Instance();
    TakeCalls();
    holder->m_baseServiceOne->Release();
    holder->m_baseServiceTwo->Release();
    holder->m_moduleFinder->Release();
    holder->m_ferrocoreService->Release();
    holder->m_baseServiceThree->Release();
    EXPECT_EQ(TakeCalls(), (Calls{"BaseServiceOne.Release", "BaseServiceTwo.Release", "IModuleFinder.Release",
                                  "FerrocoreService.Release", "BaseServiceThree.Release"}));
}

TEST_F(BaseServices, BindDoesNothingAtAllWhenAllFiveAreSet) {
    CBaseServices::Instance();
    TakeCalls();
    CBaseServices::Instance()->Bind();
    CBaseServices::Instance()->Bind();
    EXPECT_EQ(TakeCalls(), Calls());
    EXPECT_EQ(Bound(), five);
}

TEST_F(BaseServices, AllFieldsStayNullWithNeitherLibraryLoaded) {
    system.modules.clear();
    CBaseServices* const holder = CBaseServices::Instance();
    ASSERT_NE(holder, nullptr);
    EXPECT_EQ(TakeCalls(), ferrocoreSought + zelkBaseSought);
    EXPECT_EQ(Bound(), std::set<std::string>());
    holder->Bind();
    EXPECT_EQ(TakeCalls(), ferrocoreSought + zelkBaseSought);
    EXPECT_EQ(Bound(), std::set<std::string>());
}

TEST_F(BaseServices, FourAreBoundOnceWhileFerrocoreIsMissingAndIsSoughtAgainByEachBind) {
    system.modules.erase("Ferrocore.dll");
    CBaseServices* const holder = CBaseServices::Instance();
    EXPECT_EQ(TakeCalls(), ferrocoreSought + zelkBaseBound);
    for (int i = 0; i < 3; ++i) {
        holder->Bind();
        EXPECT_EQ(TakeCalls(), ferrocoreSought);
        EXPECT_EQ(Bound(), four);
    }
}

TEST_F(BaseServices, FerrocoreLoadedLateIsFoundByTheNextBind) {
    system.modules.erase("Ferrocore.dll");
    CBaseServices* const holder = CBaseServices::Instance();
    TakeCalls();
    system.modules["Ferrocore.dll"] = kit::ScriptedSiblings::Factory();
    holder->Bind();
    EXPECT_EQ(TakeCalls(), ferrocoreBound);
    EXPECT_EQ(Bound(), five);
    holder->Bind();
    EXPECT_EQ(TakeCalls(), Calls());
}

TEST_F(BaseServices, ZelkBaseLoadedLateIsFoundByTheNextBind) {
    system.modules.erase("ZelkBase.dll");
    CBaseServices* const holder = CBaseServices::Instance();
    EXPECT_EQ(TakeCalls(), ferrocoreBound + zelkBaseSought);
    EXPECT_EQ(Bound(), std::set<std::string>{"FerrocoreService"});
    system.modules["ZelkBase.dll"] = kit::ScriptedSiblings::Factory();
    holder->Bind();
    EXPECT_EQ(TakeCalls(), zelkBaseBound);
    EXPECT_EQ(Bound(), five);
}

TEST_F(BaseServices, RefusedThirdServiceMakesEachBindReleaseAndRebindTheOtherThree) {
    siblings.refused = {"BaseServiceThree"};
    CBaseServices* const holder = CBaseServices::Instance();
    EXPECT_EQ(TakeCalls(),
              ferrocoreBound + Calls({"GetModuleHandleW(ZelkBase.dll)", "GetProcAddress(ZelkBase.dll,CreateZelkObject)",
                                      "create IModuleFinder", "create BaseServiceTwo", "create BaseServiceOne",
                                      "refuse BaseServiceThree"}));
    for (int i = 0; i < 3; ++i) {
        holder->Bind();
        EXPECT_EQ(TakeCalls(), (Calls{"GetModuleHandleW(ZelkBase.dll)", "GetProcAddress(ZelkBase.dll,CreateZelkObject)",
                                      "IModuleFinder.Release", "create IModuleFinder", "BaseServiceTwo.Release",
                                      "create BaseServiceTwo", "BaseServiceOne.Release", "create BaseServiceOne",
                                      "refuse BaseServiceThree"}));
        EXPECT_EQ(Bound(),
                  (std::set<std::string>{"IModuleFinder", "BaseServiceTwo", "BaseServiceOne", "FerrocoreService"}));
    }
}

TEST_F(BaseServices, ServiceThatIsHadAgainEndsTheRebinding) {
    siblings.refused = {"BaseServiceOne"};
    CBaseServices* const holder = CBaseServices::Instance();
    TakeCalls();
    siblings.refused.clear();
    holder->Bind();
    EXPECT_EQ(TakeCalls(),
              (Calls{"GetModuleHandleW(ZelkBase.dll)", "GetProcAddress(ZelkBase.dll,CreateZelkObject)",
                     "IModuleFinder.Release", "create IModuleFinder", "BaseServiceTwo.Release", "create BaseServiceTwo",
                     "create BaseServiceOne", "BaseServiceThree.Release", "create BaseServiceThree"}));
    EXPECT_EQ(Bound(), five);
    holder->Bind();
    EXPECT_EQ(TakeCalls(), Calls());
}

// Whichever of the four is missing, all four are bound anew: released first, one after the other, each just before it
// is requested again.
TEST_F(BaseServices, AnyMissingServiceOfZelkBaseRebindsAllFour) {
    CBaseServices* const holder = CBaseServices::Instance();
    const Calls order{"IModuleFinder", "BaseServiceTwo", "BaseServiceOne", "BaseServiceThree"};
    for (const std::string& missing : order) {
        siblings.refused = {missing};
        if (missing == "IModuleFinder") {
            holder->m_moduleFinder.Reset();
        } else if (missing == "BaseServiceTwo") {
            holder->m_baseServiceTwo.Reset();
        } else if (missing == "BaseServiceOne") {
            holder->m_baseServiceOne.Reset();
        } else {
            holder->m_baseServiceThree.Reset();
        }
        TakeCalls();
        Calls expected{"GetModuleHandleW(ZelkBase.dll)", "GetProcAddress(ZelkBase.dll,CreateZelkObject)"};
        for (const std::string& service : order) {
            if (service == missing) {
                expected.push_back("refuse " + service);
            } else {
                expected.push_back(service + ".Release");
                expected.push_back("create " + service);
            }
        }
        holder->Bind();
        EXPECT_EQ(TakeCalls(), expected) << missing;
        siblings.refused.clear();
        holder->Bind();
        EXPECT_EQ(Bound(), five);
    }
}

TEST_F(BaseServices, RefusedFerrocoreServiceIsAskedForAgainAndTheFourAreNotTouched) {
    siblings.refused = {"FerrocoreService"};
    CBaseServices* const holder = CBaseServices::Instance();
    TakeCalls();
    holder->Bind();
    EXPECT_EQ(TakeCalls(), (Calls{"GetModuleHandleW(Ferrocore.dll)", "GetProcAddress(Ferrocore.dll,CreateZelkObject)",
                                  "refuse FerrocoreService"}));
    EXPECT_EQ(Bound(), four);
}

TEST_F(BaseServices, LibraryWithoutAFactoryLeavesItsFieldsNull) {
    system.modules = {{"ZelkBase.dll", nullptr}, {"Ferrocore.dll", nullptr}};
    CBaseServices* const holder = CBaseServices::Instance();
    const Calls sought{"GetModuleHandleW(Ferrocore.dll)", "GetProcAddress(Ferrocore.dll,CreateZelkObject)",
                       "GetModuleHandleW(ZelkBase.dll)", "GetProcAddress(ZelkBase.dll,CreateZelkObject)"};
    EXPECT_EQ(TakeCalls(), sought);
    holder->Bind();
    EXPECT_EQ(TakeCalls(), sought);
    EXPECT_EQ(Bound(), std::set<std::string>());
}

// A rebinding that is due finds no library, or no factory in it: what is set stays, and nothing is released.
TEST_F(BaseServices, FieldsStayAsTheyAreWhenARebindingFindsNoLibraryOrNoFactory) {
    siblings.refused = {"BaseServiceThree"};
    CBaseServices* const holder = CBaseServices::Instance();
    const std::set<std::string> bound{"IModuleFinder", "BaseServiceTwo", "BaseServiceOne", "FerrocoreService"};
    ASSERT_EQ(Bound(), bound);
    TakeCalls();
    system.modules["ZelkBase.dll"] = nullptr;
    holder->Bind();
    EXPECT_EQ(TakeCalls(), (Calls{"GetModuleHandleW(ZelkBase.dll)", "GetProcAddress(ZelkBase.dll,CreateZelkObject)"}));
    EXPECT_EQ(Bound(), bound);
    system.modules.erase("ZelkBase.dll");
    holder->Bind();
    EXPECT_EQ(TakeCalls(), zelkBaseSought);
    EXPECT_EQ(Bound(), bound);
}

TEST_F(BaseServices, LibraryThatGoesWhileAllFiveAreSetIsNotMissed) {
    CBaseServices* const holder = CBaseServices::Instance();
    TakeCalls();
    system.modules.clear();
    holder->Bind();
    EXPECT_EQ(TakeCalls(), Calls());
    EXPECT_EQ(Bound(), five);
}

// Says no and delivers, or says yes and does not.
uint32_t MORD_CDECL LyingFactory(const GUID* iid, void** out) {
    void* service = nullptr;
    kit::ScriptedSiblings::Factory()(iid, &service);
    if (kit::ServiceName(*iid) == "BaseServiceThree") {
        return 0;
    }
    *out = service;
    return 0x80004002U;
}

TEST_F(BaseServices, FactoryResultIsNotLookedAt) {
    system.modules = {{"ZelkBase.dll", LyingFactory}, {"Ferrocore.dll", LyingFactory}};
    CBaseServices::Instance();
    EXPECT_EQ(Bound(),
              (std::set<std::string>{"IModuleFinder", "BaseServiceTwo", "BaseServiceOne", "FerrocoreService"}));
}

// The first creation of a service takes long enough for the other threads to come.
TEST_F(BaseServices, ConcurrentFirstCallersWaitForTheOneHolder) {
    siblings.calls.onAdd = [](const std::string& call) {
        if (call == "create FerrocoreService") {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
    };
    constexpr size_t callers = 16;
    std::vector<CBaseServices*> holders(callers);
    std::vector<char> complete(callers);
    std::vector<std::thread> threads;
    for (size_t i = 0; i < callers; ++i) {
        threads.emplace_back([&, i] {
            holders[i] = CBaseServices::Instance();
            complete[i] = static_cast<char>(static_cast<bool>(holders[i]->m_baseServiceThree));
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(std::set<CBaseServices*>(holders.begin(), holders.end()), std::set{CBaseServices::Instance()});
    EXPECT_EQ(std::count(complete.begin(), complete.end(), 1), static_cast<std::ptrdiff_t>(callers));
    EXPECT_EQ(TakeCalls(), ferrocoreBound + zelkBaseBound);
}

} // namespace
