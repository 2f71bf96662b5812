// Events on several threads against changes of the allow list and of the action table. A look-up sees a table as it was
// before a change or after it, never in between. Meant to be run under ThreadSanitizer too.
//
// The modes, the gate and the sink are atomic words: where they change meanwhile, an event sees the old or the new one.
#include <algorithm>
#include <iostream>
#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "mordRev/src/mordRev.h"
#include "race/directSiblings.h"
#include "race/raceHost.h"
#include "race/threads.h"

namespace {

using namespace race;

constexpr int eventThreads = 3;
constexpr int mids = 60;

std::string MidName(char list, int number) {
    return list + std::to_string(100 + number);
}

// A list with some keys of its own and "dns" for its mids, the greatest first: filled halfway it holds no "dns", or not
// the least of the mids. `last` comes behind all others.
std::string ListOf(char list, const std::string& last = "") {
    std::string entries;
    const auto add = [&entries](const std::string& mid, const std::string& key) {
        entries +=
            (entries.empty() ? "" : ",") + std::string(R"({"mid":")") + mid + R"(","protocol":[")" + key + "\"]}";
    };
    for (int number = 0; number < mids; ++number) {
        add("other", list + std::string("-key-") + std::to_string(number));
    }
    for (int number = mids; number > 0; --number) {
        add(MidName(list, number - 1), "dns");
    }
    if (!last.empty()) {
        add(last, "dns");
    }
    return "{\"mid_list\":[" + entries + "]}";
}

// An action table with rows of its own and, as its last, this one for "dns".
std::string ActionsOf(char table, const std::string& lastRow) {
    std::string rows;
    for (int number = 0; number < mids; ++number) {
        rows += std::string("\"") + table + std::to_string(number) + "\":1,";
    }
    return "{" + rows + lastRow + "}";
}

// An answer that holds these mids for the rule.
std::string AnswerOf(const std::vector<std::string>& names) {
    std::string members;
    for (const std::string& name : names) {
        members += (members.empty() ? "\"" : ",\"") + name + "\":1";
    }
    return R"({"g":{"value":1,"mid":{)" + members + "}}}";
}

// The first things that were wrong; threads report them here, since only the main one may fail the test.
class Complaints {
public:
    void Add(const Outcome& outcome, const std::string& what) {
        const std::lock_guard lock(m_lock);
        if (m_texts.size() < 3) {
            std::string text =
                what + ": reply " + std::to_string(outcome.reply) + " deletions " + std::to_string(outcome.deletions);
            for (const auto* const lines : {&outcome.reports, &outcome.records}) {
                for (const std::string& line : *lines) {
                    text += "\n  " + line;
                }
            }
            m_texts.push_back(text);
        }
    }
    std::vector<std::string> All() const { return m_texts; }

private:
    std::mutex m_lock;
    std::vector<std::string> m_texts;
};

enum class Logging { Off, On };

void PrintTo(Logging logging, std::ostream* out) {
    *out << (logging == Logging::On ? "LoggingOn" : "LoggingOff");
}

class Race : public testing::TestWithParam<Logging> {
protected:
    void SetUp() override {
        PrepareLibrary(GetParam() == Logging::On);
        receiver = std::make_unique<CMordRecv>();
        ASSERT_TRUE(receiver->Init(&host));
        receiver->SetReportSink(&host);
        receiver->Start();
    }

    void SetMode(uint32_t mode) { ASSERT_TRUE(receiver->SetProperty(PROP_DEFENDER_MODE, &mode, sizeof mode)); }

    // A thread that sets these documents in turn.
    void AddListSetter(const std::vector<std::string>& documents) {
        threads.Add([this, documents, next = size_t{0}]() mutable {
            receiver->SetAllowList(documents[next++ % documents.size()].c_str());
            lists.Raise();
        });
    }
    void AddActionSetter(const std::vector<std::string>& documents) {
        threads.Add([this, documents = documents, next = size_t{0}]() mutable {
            std::string& document = documents[next++ % documents.size()];
            receiver->SetProperty(PROP_ACTION_JSON, document.data(), static_cast<uint32_t>(document.size() + 1));
            actions.Raise();
        });
    }
    void AddEventThreads(const std::function<void(const Outcome&)>& judge) {
        for (int i = 0; i < eventThreads; ++i) {
            threads.Add([this, judge] {
                const Outcome outcome = HandleOneEvent(*receiver);
                events.Raise();
                judge(outcome);
            });
        }
    }

    // What was done, for the figures.
    void Tell(const std::string& more = "") const {
        std::cout << events.Count() << " events against " << lists.Count() << " allow lists and " << actions.Count()
                  << " action documents" << more << "\n";
    }

    RaceHost host;
    std::unique_ptr<CMordRecv> receiver;
    Threads threads;
    Tally events;
    Tally lists;
    Tally actions;
    Complaints complaints;
};

bool Holds(const std::vector<std::string>& texts, const std::string& words) {
    return std::any_of(texts.begin(), texts.end(),
                       [&words](const std::string& text) { return text.find(words) != std::string::npos; });
}

TEST_P(Race, MidThatEveryListAllowsIsAlwaysFound) {
    SetMode(0);
    host.answer = AnswerOf({"common"});
    ASSERT_TRUE(receiver->SetAllowList(ListOf('a', "common").c_str()));
    const std::string refused = "{\"mid_list\":[";  // the list stays as it is
    const std::string lacking = "{\"no_list\":[]}"; // likewise
    AddListSetter({ListOf('a', "common"), ListOf('b', "common"), refused});
    AddListSetter({ListOf('b', "common"), lacking, ListOf('a', "common")});
    AddEventThreads([this](const Outcome& outcome) {
        if (outcome.reply != 1 || !outcome.result || outcome.deletions != 1 || outcome.reports.size() != 1) {
            complaints.Add(outcome, "not allowed");
        }
    });
    threads.Race([this] { return events.Count() > 100; });
    EXPECT_EQ(complaints.All(), std::vector<std::string>());
    EXPECT_GT(events.Count(), 100U);
    Tell();
}

TEST_P(Race, ActionThatEveryTableHoldsIsAlwaysFound) {
    host.queryResult = 1; // a query error blocks, the action allows
    std::string first = ActionsOf('x', "\"dns\":1");
    ASSERT_TRUE(receiver->SetProperty(PROP_ACTION_JSON, first.data(), 1));
    const std::string refused = "{\"dns\":0"; // the table stays as it is
    AddActionSetter({ActionsOf('x', "\"dns\":1"), ActionsOf('y', "\"dns\":-1"), refused});
    AddActionSetter({ActionsOf('y', "\"dns\":2"), ActionsOf('x', "\"dns\":1")});
    AddEventThreads([this](const Outcome& outcome) {
        if (outcome.reply != 1 || outcome.result || !Holds(outcome.reports, "\"block_modified\": true")) {
            complaints.Add(outcome, "not allowed by its action");
        }
    });
    threads.Race([this] { return events.Count() > 100; });
    EXPECT_EQ(complaints.All(), std::vector<std::string>());
    EXPECT_GT(events.Count(), 100U);
    Tell();
}

TEST_P(Race, EveryDecisionIsExplainedByOneListAndOneTable) {
    std::vector<std::string> names;
    for (int number = 0; number < mids; ++number) {
        names.push_back(MidName('a', number));
        names.push_back(MidName('b', number));
    }
    host.answer = AnswerOf(names);
    AddListSetter({ListOf('a'), ListOf('b')});
    AddListSetter({ListOf('b'), ListOf('a')});
    threads.Add([this] { receiver->ClearAllowList(); });
    AddActionSetter({ActionsOf('x', "\"dns\":1"), ActionsOf('y', "\"dns\":0")});

    Tally matches;
    Tally matchesByB; // known from the records alone
    Tally byAction;
    Tally blocked;
    const bool logs = GetParam() == Logging::On;
    AddEventThreads([&](const Outcome& outcome) {
        const bool matched = outcome.deletions == 1;
        const bool action = outcome.reply == 1 && !matched;
        (matched ? matches : action ? byAction : blocked).Raise();
        const std::string block = std::string("\"block\": ") + (outcome.reply == 0 ? "true" : "false");
        const std::string modified = std::string("\"block_modified\": ") + (action ? "true" : "false");
        if (outcome.reply > 1 || outcome.deletions > 1 || outcome.result != matched || outcome.reports.size() != 1 ||
            !Holds(outcome.reports, block + ",\n    " + modified)) {
            complaints.Add(outcome, "sides that disagree");
        }
        if (!logs) {
            return;
        }
        const bool a = Holds(outcome.records, "match mid=" + MidName('a', 0) + ",rule guid=g,reply:1");
        const bool b = Holds(outcome.records, "match mid=" + MidName('b', 0) + ",rule guid=g,reply:1");
        const bool empty = Holds(outcome.records, "failallow_list_size:0query_mids_size:" + std::to_string(2 * mids));
        if (a + b + empty != 1 || (a || b) != matched) {
            complaints.Add(outcome, "no list explains it");
        }
        if (b) {
            matchesByB.Raise();
        }
        const bool row = Holds(outcome.records, "type=dns,defender mode=3,action=1");
        if (!matched && row != action) {
            complaints.Add(outcome, "no table explains it");
        }
    });
    const auto allSeen = [&] {
        return matches.Count() > matchesByB.Count() && (!logs || matchesByB.Count() > 0) && byAction.Count() > 0 &&
               blocked.Count() > 0;
    };
    threads.Race(allSeen);
    EXPECT_EQ(complaints.All(), std::vector<std::string>());
    EXPECT_TRUE(allSeen());
    Tell(": " + std::to_string(matches.Count()) + " matched, " + std::to_string(matchesByB.Count()) +
         " of them known to be by the second list, " + std::to_string(byAction.Count()) + " allowed by their action, " +
         std::to_string(blocked.Count()) + " blocked");
}

TEST_P(Race, EveryOperationAtOnceLeavesEachEventWhole) {
    host.answer = AnswerOf({"common"});
    host.errorEvery = 3;
    RaceHost otherSink;
    AddListSetter({ListOf('a', "common"), "{", ListOf('b'), "[]"});
    AddActionSetter({ActionsOf('x', "\"dns\":1"), "{", ActionsOf('y', "\"dns\":0"), "[]"});
    Tally settings;
    // A thread for each field that may change while events run.
    const auto addWriter = [this, &settings](const std::function<void(uint32_t)>& write) {
        threads.Add([&settings, write, turn = 0U]() mutable {
            write(turn++);
            settings.Raise();
        });
    };
    addWriter([this](uint32_t turn) {
        uint32_t mode = turn % 7; // 6 is no mode
        receiver->SetProperty(PROP_DEFENDER_MODE, &mode, sizeof mode);
    });
    addWriter([this](uint32_t turn) {
        uint32_t mode = turn % 3;
        receiver->SetProperty(PROP_EXCEPTION_MODE, &mode, sizeof mode);
    });
    addWriter([this](uint32_t turn) { turn % 4 != 0 ? receiver->Start() : receiver->Stop(); });
    addWriter([this, &otherSink](uint32_t turn) {
        receiver->SetReportSink(turn % 3 == 0 ? nullptr : turn % 3 == 1 ? &host : &otherSink);
    });
    // And one for what changes no field, or none that an event reads.
    threads.Add([this] {
        char empty[] = "";
        void* interface = nullptr;
        receiver->ClearAllowList();
        receiver->SetProperty(77, empty, 1);
        receiver->SetProperty(PROP_ACTION_JSON, nullptr, 1);
        receiver->GetProperty(PROP_DEFENDER_MODE, 0, 0);
        receiver->QueryInterface(&IID_IMordRev, &interface);
        receiver->AddRef();
        receiver->Release();
    });
    Tally blocked;
    Tally matched;
    Tally modified;
    Tally emergency;
    AddEventThreads([&](const Outcome& outcome) {
        const bool block = outcome.reply == 0;
        const bool changed = Holds(outcome.reports, "\"block_modified\": true");
        (outcome.deletions == 1 ? matched : changed ? modified : outcome.reports.empty() ? emergency : blocked).Raise();
        if (outcome.reply > 1 || outcome.deletions > 1 || (outcome.deletions == 1 && (block || changed)) ||
            (changed && block) || outcome.reports.size() > 1 ||
            (!outcome.reports.empty() &&
             !Holds(outcome.reports, std::string("\"block\": ") + (block ? "true" : "false")))) {
            complaints.Add(outcome, "sides that disagree");
        }
    });
    const auto allSeen = [&] {
        return blocked.Count() > 0 && matched.Count() > 0 && modified.Count() > 0 && emergency.Count() > 0;
    };
    threads.Race(allSeen);
    EXPECT_EQ(complaints.All(), std::vector<std::string>());
    EXPECT_TRUE(allSeen());
    Tell(" and " + std::to_string(settings.Count()) + " settings: " + std::to_string(matched.Count()) + " matched, " +
         std::to_string(modified.Count()) + " modified, " + std::to_string(emergency.Count()) + " unreported, " +
         std::to_string(blocked.Count()) + " others");
}

INSTANTIATE_TEST_SUITE_P(, Race, testing::Values(Logging::Off, Logging::On));

} // namespace
