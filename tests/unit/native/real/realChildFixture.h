// Tests on a child of 32 and one of 64 bits, with the receiver's logging at hand.
#pragma once

#include <algorithm>
#include <memory>
#include <optional>

#include "kit/host/receiverFixture.h"
#include "kit/text/utf.h"
#include "native/targetProcess.h"
#include "unit/native/real/childProcess.h"
#include "unit/native/real/pebQuery.h"
#include "unit/native/real/systemTellsPeb.h"

constexpr bool callerIs32Bit = sizeof(void*) == 4;

class RealChildFixture : public kit::ReceiverFixture, public testing::WithParamInterface<int> {
protected:
    // Starts the child. Afterwards the function table finds all its PEBs.
    void SetUp() override {
        ReceiverFixture::SetUp();
        child.emplace(GetParam());
        if (LacksPebQuery(child->Handle())) {
            ProvidePebQuery();
        }
    }

    bool ChildIs32Bit() const { return GetParam() == 32; }
    ModuleKind OwnKind() const { return ChildIs32Bit() ? ModuleKind32 : ModuleKind64; }

    // The child's program, as the system reports it.
    std::string Program() const;

    // A new object on the child.
    TargetProcess& Target() {
        m_target = std::make_unique<TargetProcess>(child->Handle(), 0);
        return *m_target;
    }

    std::optional<ChildProcess> child;

private:
    std::unique_ptr<TargetProcess> m_target;
};

// The name of a parameter: "Child32".
inline std::string ChildName(const testing::TestParamInfo<int>& bits) {
    return "Child" + std::to_string(bits.param);
}

// Returns whether the program runs under Wine.
bool UnderWine();
