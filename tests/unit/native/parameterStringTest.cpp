// The strings of a target's parameters block, for every pairing of caller and target.
#include <cstddef>

#include "kit/system/scriptedProcess/nativeFixture.h"
#include "kit/system/scriptedProcess/pairingFixture.h"

namespace {

using namespace scripted;

const Text imagePath = WIDE("C:\\Program Files\\Client\\Client.exe");

class ParameterString : public PairingFixture {
protected:
    void SetUp() override {
        PairingFixture::SetUp();
        WithImage([this](auto& image) {
            image.AddText(target->memory, ImagePathName, imagePath);
            image.Map(target->memory);
            image.Put(target->memory);
            pointerAddress =
                image.pebAddress + offsetof(std::remove_reference_t<decltype(image.peb)>, ProcessParameters);
            headerAddress = image.HeaderAddress(ImagePathName);
            headerSize = sizeof image.String(ImagePathName);
            textAddress = image.TextAddress(ImagePathName);
        });
    }

    // Writes the image again after a test has changed it.
    void Rewrite() {
        WithImage([this](auto& image) { image.Put(target->memory); });
    }

    // The text up to its first NUL, which must lie in the record.
    static Text TextOf(const std::shared_ptr<Wow64extStringW>& string) {
        if (string == nullptr) {
            ADD_FAILURE() << "no string";
            return {};
        }
        return string->buffer.get();
    }

    uint64_t pointerAddress = 0;
    uint64_t headerAddress = 0;
    uint64_t headerSize = 0;
    uint64_t textAddress = 0;
};

class ParameterStringOf32BitTargets : public ParameterString {};

TEST_P(ParameterString, IsFetchedByFourReadsOfTheSizesAndAddressesTold) {
    EXPECT_EQ(TextOf(Target().ReadImagePath()), imagePath);
    const uint64_t doubled = (imagePath.size() + 1) * 2 * 2;
    EXPECT_EQ(system.TakeCalls(), Join({PebLines(), ReadLines(pointerAddress, 8), ReadLines(headerAddress, headerSize),
                                        ReadLines(textAddress, doubled)}));
}

TEST_P(ParameterString, HasTheMaximumLengthAsItsCountOfCharactersAndOneMoreThatIsNul) {
    const auto string = Target().ReadImagePath();
    ASSERT_NE(string, nullptr);
    EXPECT_EQ(string->length, (imagePath.size() + 1) * 2);
    EXPECT_EQ(string->buffer[string->length], WideChar{});
}

TEST_P(ParameterString, OfEachIndexIsTheFieldOfTheBlock) {
    WithImage([this](auto& image) {
        for (uint32_t i = 0; i < 8; ++i) {
            if (i != ImagePathName) {
                image.AddText(target->memory, i, WIDE("field ") + Text(1, static_cast<WideChar>('0' + i)));
            }
        }
    });
    Rewrite();
    for (uint32_t i = 0; i < 8; ++i) {
        const Text expected = i == ImagePathName ? imagePath : WIDE("field ") + Text(1, static_cast<WideChar>('0' + i));
        EXPECT_EQ(TextOf(Target().ReadParameterString(i)), expected) << i;
    }
    EXPECT_EQ(TextOf(Target().ReadCommandLine()), WIDE("field 3"));
    EXPECT_EQ(TextOf(Target().ReadCurrentDirectory()), WIDE("field 0"));
}

TEST_P(ParameterString, IsMissingForAnIndexAbove7WithoutARead) {
    EXPECT_EQ(Target().ReadParameterString(8), nullptr);
    EXPECT_EQ(Target().ReadParameterString(0xFFFFFFFF), nullptr);
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

TEST_P(ParameterString, IsMissingWhenAReadGivesANegativeStatus) {
    for (const uint64_t address : {pointerAddress, headerAddress, textAddress}) {
        for (const uint32_t status : negativeStatuses) {
            system.byAddress = {{address, {status, true}}};
            EXPECT_EQ(Target().ReadImagePath(), nullptr) << Hex(address) << " " << Hex(status);
        }
    }
}

TEST_P(ParameterString, IsDeliveredWhenAReadGivesAPositiveStatus) {
    for (const uint64_t address : {pointerAddress, headerAddress, textAddress}) {
        for (const uint32_t status : positiveStatuses) {
            system.byAddress = {{address, {status, true}}};
            EXPECT_EQ(TextOf(Target().ReadImagePath()), imagePath) << Hex(address) << " " << Hex(status);
        }
    }
}

TEST_P(ParameterString, NoReadFollowsOneThatFailed) {
    Target();
    const std::string reader = Reader() + "(process 7, ";
    for (const auto& [address, reads] :
         std::vector<std::pair<uint64_t, size_t>>{{pointerAddress, 1}, {headerAddress, 2}, {textAddress, 3}}) {
        system.byAddress = {{address, {accessViolation}}};
        system.TakeCalls();
        EXPECT_EQ(Target().ReadImagePath(), nullptr);
        EXPECT_EQ(system.Count(reader), reads + (PebLines()[1].starts_with(reader) ? 1 : 0));
    }
}

TEST_P(ParameterString, IsMissingWithoutAPeb) {
    target->peb32 = 0;
    target->peb64 = 0;
    EXPECT_EQ(Target().ReadImagePath(), nullptr);
}

// The address that the query found is enough, but where the one read decides whether there is one.
TEST_P(ParameterString, APebBlockThatCannotBeReadIsNoFailureButForA64BitTargetOfAWow64Caller) {
    for (const uint32_t status : negativeStatuses) {
        system.byAddress = {{PebAddress(), {status}}};
        const auto string = Target().ReadImagePath();
        if (GetParam() == Pairing::Wow64CallerOf64) {
            EXPECT_EQ(string, nullptr) << Hex(status);
        } else {
            EXPECT_EQ(TextOf(string), imagePath) << Hex(status);
        }
    }
}

TEST_P(ParameterString, IsMissingWhenTheQueryForThePebFails) {
    Target();
    for (const char* const function : {"NtQueryInformationProcess", "NtWow64QueryInformationProcess64"}) {
        system.Next(function, {accessViolation});
    }
    EXPECT_EQ(Target().ReadImagePath(), nullptr);
    EXPECT_EQ(system.TakeCalls(), Lines{PebLines().front()});
}

TEST_P(ParameterString, IsMissingWithoutTheFunctionThatFindsThePeb) {
    system.missing = {PebLines().front().substr(0, PebLines().front().find('('))};
    EXPECT_EQ(Target().ReadImagePath(), nullptr);
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

TEST_P(ParameterString, IsMissingWithoutTheFunctionThatReads) {
    system.missing = {"NtWow64ReadVirtualMemory64"};
    if (CallerIsWow64()) {
        EXPECT_EQ(Target().ReadImagePath(), nullptr);
    } else {
        EXPECT_EQ(TextOf(Target().ReadImagePath()), imagePath); // nobody asks for it
    }
}

TEST_P(ParameterString, IsMissingWhenTheParametersPointerIsNull) {
    WithImage([](auto& image) { image.peb.ProcessParameters = 0; });
    Rewrite();
    EXPECT_EQ(Target().ReadImagePath(), nullptr);
    const uint64_t offset = WithImage([](auto& image) {
        return static_cast<uint64_t>(image.HeaderAddress(ImagePathName) - image.parametersAddress);
    });
    EXPECT_EQ(system.TakeCalls().back(), ReadLines(offset, headerSize).back());
}

// The word behind the pointer of a 32-bit block stays in the value, as it is read.
TEST_P(ParameterString, TakesEightBytesForTheParametersPointerOnBothRoutes) {
    image32.peb.SubSystemData = 3;
    image64.peb.SubSystemData = 3;
    Rewrite();
    const auto string = Target().ReadImagePath();
    if (!TargetIs32()) {
        EXPECT_EQ(TextOf(string), imagePath);
        return;
    }
    const uint64_t whole = 0x300000000 + headerAddress;
    if (Caller::is64Bit || CallerIsWow64()) { // the address goes to the system whole
        EXPECT_EQ(string, nullptr);
        EXPECT_EQ(system.TakeCalls().back(), ReadLines(whole, headerSize).back());
    } else { // of which a 32-bit machine takes the low half
        EXPECT_EQ(TextOf(string), imagePath);
    }
}

TEST_P(ParameterString, AddsTheFieldsOffsetWithCarryInto64Bits) {
    WithImage([](auto& image) { image.peb.ProcessParameters = 0xFFFFFFF0; });
    Rewrite();
    EXPECT_EQ(Target().ReadImagePath(), nullptr);
    const uint64_t offset = TargetIs32() ? 56 : 96;
    const uint64_t sum = 0xFFFFFFF0 + offset;
    EXPECT_EQ(system.TakeCalls().back(),
              ReadLines(GetParam() == Pairing::Machine32 ? static_cast<uint32_t>(sum) : sum, headerSize).back());
}

TEST_P(ParameterString, IsMissingWhenTheDoubledReadRunsIntoMemoryThatCannotBeRead) {
    WithImage([this](auto& image) {
        const auto maximumLength = image.String(ImagePathName).MaximumLength;
        target->memory.Unmap(image.TextAddress(ImagePathName));
        image.AddText(target->memory, ImagePathName, imagePath, maximumLength, maximumLength * size_t{2} - 1);
    });
    EXPECT_EQ(Target().ReadImagePath(), nullptr);
}

TEST_P(ParameterString, ReadsTwiceTheLargestMaximumLength) {
    WithImage([this](auto& image) {
        target->memory.Unmap(image.TextAddress(ImagePathName));
        image.AddText(target->memory, ImagePathName, imagePath, 65535, 131070);
    });
    Rewrite();
    const auto string = Target().ReadImagePath();
    EXPECT_EQ(TextOf(string), imagePath);
    EXPECT_EQ(string->length, 65535u);
    EXPECT_EQ(system.TakeCalls().back(), ReadLines(textAddress, 131070).back());
}

TEST_P(ParameterString, WithAMaximumLengthOf0IsEmptyAndItsReadAsksFor0Bytes) {
    WithImage([](auto& image) { image.String(ImagePathName).MaximumLength = 0; });
    Rewrite();
    const auto string = Target().ReadImagePath();
    EXPECT_EQ(TextOf(string), Text());
    EXPECT_EQ(string->length, 0u);
    EXPECT_EQ(system.TakeCalls().back(), ReadLines(textAddress, 0).back());
}

TEST_P(ParameterString, WithoutANulEndsAtTheEndOfTheRecord) {
    WithImage([this](auto& image) {
        target->memory.Unmap(image.TextAddress(ImagePathName));
        image.AddText(target->memory, ImagePathName, Text(20, WIDE('x')), 20, 40);
    });
    Rewrite();
    EXPECT_EQ(TextOf(Target().ReadImagePath()), Text(20, WIDE('x')));
}

TEST_P(ParameterString, EndsAtTheFirstNulAndNotAtTheLengthOfTheHeader) {
    for (const uint16_t length : {uint16_t{0}, uint16_t{4}, uint16_t{0xFFFE}}) {
        WithImage([=](auto& image) { image.String(ImagePathName).Length = length; });
        Rewrite();
        EXPECT_EQ(TextOf(Target().ReadImagePath()), imagePath) << length;
    }
}

TEST_P(ParameterString, TakesTheWidthOfItsBufferPointerFromTheTarget) {
    if (TargetIs32()) { // what lies behind the 32-bit header is no part of the address
        image32.String(ImagePathName + 1) = {0xFFFF, 0xFFFF, 0xFFFFFFFF};
        image32.Put(target->memory);
        EXPECT_EQ(TextOf(Target().ReadImagePath()), imagePath);
    } else {
        EXPECT_EQ(TextOf(Target().ReadImagePath()), imagePath);
        EXPECT_GT(textAddress, 0xFFFFFFFFu);
        EXPECT_EQ(system.TakeCalls().back(), ReadLines(textAddress, (imagePath.size() + 1) * 4).back());
    }
}

TEST_P(ParameterStringOf32BitTargets, TextAboveTwoGiBIsReadAtItsZeroExtendedAddress) {
    image32.textsAddress = 0x90000000;
    image32.AddText(target->memory, ImagePathName, imagePath);
    Rewrite();
    EXPECT_EQ(TextOf(Target().ReadImagePath()), imagePath);
    EXPECT_EQ(system.TakeCalls().back(), ReadLines(0x90200000, (imagePath.size() + 1) * 4).back());
}

// The address of a plain query is sign-extended. A caller whose reads take it whole then misses the field.
TEST_P(ParameterStringOf32BitTargets, OfAPebAboveTwoGiBIsMissingWhereTheReadTakesTheSignExtendedAddressWhole) {
    image32.pebAddress = 0x80310000;
    target->peb32 = image32.pebAddress;
    target->memory.Map(image32.pebAddress, sizeof image32.peb);
    Rewrite();
    const auto string = Target().ReadImagePath();
    const Lines calls = system.TakeCalls();
    if (CallerIsWow64()) {
        EXPECT_EQ(string, nullptr);
        EXPECT_EQ(calls.back(), ReadLines(0xFFFFFFFF80310010, 8).back());
    } else { // the low half, or an address that was never 32 bits wide
        EXPECT_EQ(TextOf(string), imagePath);
        EXPECT_EQ(std::count(calls.begin(), calls.end(), ReadLines(0x80310010, 8).back()), 1);
    }
}

TEST_P(ParameterString, OfATargetWhoseMemoryIsGoneIsMissing) {
    Target();
    target->memory.Clear(); // it has exited
    EXPECT_EQ(Target().ReadImagePath(), nullptr);
    EXPECT_EQ(Target().ReadCommandLine(), nullptr);
    EXPECT_EQ(Target().ReadCurrentDirectory(), nullptr);
}

TEST_P(ParameterString, OutlivesTheObject) {
    std::shared_ptr<Wow64extStringW> string;
    {
        TargetProcess process(handle, 0);
        string = process.ReadImagePath();
    }
    EXPECT_EQ(TextOf(string), imagePath);
}

INSTANTIATE_TEST_SUITE_P(Pairings, ParameterStringOf32BitTargets, testing::ValuesIn(PairingsWith32BitTargets()),
                         testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Pairings, ParameterString, testing::ValuesIn(PairingsOfThisCaller()),
                         testing::PrintToStringParamName());

TEST(ParameterStringRecord, TakesTheMaximumLengthByReferenceAndIsMadeForEveryLength) {
    for (const uint16_t maximumLength : std::initializer_list<uint16_t>{0, 1, 2, 260, 65535}) {
        const Wow64extStringW string(maximumLength);
        EXPECT_EQ(string.length, maximumLength);
        EXPECT_EQ(string.buffer[maximumLength], WideChar{});
    }
}

} // namespace
