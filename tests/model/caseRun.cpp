#include "model/caseRun.h"

#include "logging/logState.h"
#include "model/directSiblings.h"
#include "model/libraryRecords.h"
#include "model/receiverModel.h"
#include "model/scriptedWorld.h"
#include "mordRev/src/mordRev.h"

namespace model {

Trace RunOnModel(const TestCase& testCase, BranchCounts& branches) {
    Trace trace;
    SiblingState siblings = testCase.siblings;
    ReceiverModel receiver(trace, siblings, branches);
    ScriptedWorld(receiver, siblings, trace).Run(testCase.operations);
    return trace;
}

Trace RunOnLibrary(const TestCase& testCase) {
    Trace trace;
    LibraryRecords records(trace);
    SiblingState siblings = testCase.siblings;
    AnswerBy(&siblings);
    TakeRecords(&records);
    {
        CMordRecv receiver;
        ScriptedWorld(receiver, siblings, trace).Run(testCase.operations);
    }
    TakeRecords(nullptr);
    AnswerBy(nullptr);
    return trace;
}

void PrepareLibrary(bool logs) {
    LogFileEnabled = false;
    LogDebugViewEnabled = false;
    LoggerObject.Reset();
    UseDirectSiblings(logs);
    CMordRecv().InitLogMoudle(); // the flags stay as it leaves them
}

} // namespace model
