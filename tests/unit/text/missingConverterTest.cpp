// The ways in which the converter can be missing at the first conversion of the process: nothing is looked for again.
// Each case needs a separate process.
#include "unit/text/textConvertFixture.h"

namespace {

using Texts = std::vector<std::string>;
using Wide = std::basic_string<WideChar>;

class MissingConverter : public TextConvert {
protected:
    void ExpectEmptyTexts() {
        EXPECT_EQ(Utf8ToWide("text"), Wide());
        EXPECT_EQ(WideToUtf8(WIDE("text")), "");
        EXPECT_EQ(Utf8ToWide(std::string(3000, 'x').c_str()), Wide());
        EXPECT_EQ(WideToUtf8(Wide(3000, WideChar{'x'}).c_str()), "");
    }

    void ExpectStillMissingWhenAllIsThere() {
        siblings.Reset();
        siblings.keepsConversions = true;
        ExpectEmptyTexts();
        EXPECT_EQ(siblings.calls.Take(), Texts());
        EXPECT_EQ(siblings.Conversions(), Texts());
    }
};

TEST_F(MissingConverter, ModuleThatIsNotLoadedAtFirstStaysMissingThoughItIsLoadedLater) {
    siblings.UnloadZelkBase();
    ExpectEmptyTexts();
    ExpectStillMissingWhenAllIsThere();
}

TEST_F(MissingConverter, ModuleWithoutAFactoryAtFirstStaysMissing) {
    siblings.LoadZelkBaseWithoutFactory();
    ExpectEmptyTexts();
    ExpectStillMissingWhenAllIsThere();
}

TEST_F(MissingConverter, ConverterThatIsRefusedAtFirstIsNotAskedForAgain) {
    siblings.refused = {"ITextConverter"};
    ExpectEmptyTexts();
    EXPECT_EQ(siblings.calls.Take(), Texts{"refuse ITextConverter"});
    ExpectStillMissingWhenAllIsThere();
}

TEST_F(MissingConverter, EmptyTextsDoNotDecideIt) {
    siblings.UnloadZelkBase();
    EXPECT_EQ(Utf8ToWide(""), Wide());
    EXPECT_EQ(WideToUtf8(nullptr), "");
    siblings.LoadZelkBase();
    EXPECT_EQ(Utf8ToWide("text"), WIDE("text"));
}

} // namespace
