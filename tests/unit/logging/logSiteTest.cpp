// The file and function names of a log site, computed at compile time.
#include "logging/logSite.h"

#include <functional>
#include <map>
#include <string_view>

#include <gtest/gtest.h>

namespace {

consteval bool FileIs(const char* path, std::string_view name) {
    return LogFileName(path) == name;
}

static_assert(FileIs("C:\\src\\mordRev\\mordRev.cpp", "mordRev.cpp"), "after the last backslash");
static_assert(FileIs("src/mordRev/src/mordRev.cpp", "mordRev.cpp"), "the separator of other systems");
static_assert(FileIs("C:\\src/mordRev.cpp", "mordRev.cpp"), "the last separator of either kind");
static_assert(FileIs("src/win\\mordRev.cpp", "mordRev.cpp"), "the last separator of either kind");
static_assert(FileIs("mordRev", "mordRev"), "a path without a separator");
static_assert(FileIs("dir\\", ""), "a separator at the end");
static_assert(FileIs("", ""));

template <size_t capacity>
consteval bool FunctionIs(const char (&signature)[capacity], std::string_view name) {
    return std::string_view(LogFunctionName<capacity>(signature).text) == name;
}

static_assert(FunctionIs("virtual bool CMordRecv::Init(IDotHost*)", "CMordRecv::Init"));
static_assert(FunctionIs("bool CMordRecv::IsMatchmid(std::string, std::vector<std::__cxx11::basic_string<char> >, "
                         "std::string*)",
                         "CMordRecv::IsMatchmid"),
              "arguments with blanks and templates");
static_assert(FunctionIs("std::string CMordRecv::GetLocalMid()", "CMordRecv::GetLocalMid"));
static_assert(FunctionIs("static bool CMordRecv::GetProcPathByPid(uint32_t, std::string*)",
                         "CMordRecv::GetProcPathByPid"));
static_assert(FunctionIs("IEventRecord** CMordRecv::MatchRules(IEventRecord*)", "CMordRecv::MatchRules"),
              "a pointer result, as GCC writes it");
static_assert(FunctionIs("IEventRecord **CMordRecv::MatchRules(IEventRecord *)", "CMordRecv::MatchRules"),
              "a pointer result, as Clang writes it");
static_assert(FunctionIs("const Base::CSmartStream &Base::CSmartStream::Self()", "Base::CSmartStream::Self"),
              "a reference result");
static_assert(FunctionIs("std::map<std::__cxx11::basic_string<char>, bool> Table::Rows() const", "Table::Rows"),
              "a template in the result");
static_assert(FunctionIs("Base::Length Base::Length::operator*(int) const", "Base::Length::operator*"),
              "an asterisk in the name");
static_assert(FunctionIs("bool StartLogger(const WideChar*)", "StartLogger"), "a free function");
static_assert(FunctionIs("CMordRecv::CMordRecv()", "CMordRecv::CMordRecv"), "a constructor has no result");
static_assert(FunctionIs("virtual CMordRecv::~CMordRecv()", "CMordRecv::~CMordRecv"), "a destructor has no result");

} // namespace

// Functions for the name format of this compiler. Outside any namespace: that would be part of the names.
struct LogSiteSample {
    std::string constructed;

    LogSiteSample() : constructed(LogFunctionName(__PRETTY_FUNCTION__).text) {}
    virtual ~LogSiteSample() = default;

    std::string Member(int) const { return LogFunctionName(__PRETTY_FUNCTION__).text; }
    virtual std::string Virtual(const std::map<int, std::string>&) { return LogFunctionName(__PRETTY_FUNCTION__).text; }
    static std::string Static() { return LogFunctionName(__PRETTY_FUNCTION__).text; }
    const char** Pointer(std::string* name) {
        *name = LogFunctionName(__PRETTY_FUNCTION__).text;
        return nullptr;
    }
    LogSiteSample& Reference(std::string* name) {
        *name = LogFunctionName(__PRETTY_FUNCTION__).text;
        return *this;
    }
    std::map<std::string, bool> Template(std::string* name) {
        *name = LogFunctionName(__PRETTY_FUNCTION__).text;
        return {};
    }
    std::function<void(int)> Callable(std::string* name) {
        *name = LogFunctionName(__PRETTY_FUNCTION__).text;
        return {};
    }
    struct Inner {
        std::string Member() { return LogFunctionName(__PRETTY_FUNCTION__).text; }
    };
};

std::string LogSiteFreeFunction(std::string);
std::string LogSiteFreeFunction(std::string) {
    return LogFunctionName(__PRETTY_FUNCTION__).text;
}

namespace {

TEST(LogFunctionName, IsTheFunctionWithItsClass) {
    LogSiteSample sample;
    EXPECT_EQ(sample.Member(1), "LogSiteSample::Member");
    EXPECT_EQ(sample.Virtual({}), "LogSiteSample::Virtual");
    EXPECT_EQ(LogSiteSample::Static(), "LogSiteSample::Static");
    EXPECT_EQ(LogSiteSample::Inner().Member(), "LogSiteSample::Inner::Member");
}

TEST(LogFunctionName, OfAConstructorRepeatsTheClass) {
    EXPECT_EQ(LogSiteSample().constructed, "LogSiteSample::LogSiteSample");
}

TEST(LogFunctionName, OfAFreeFunctionHasNoClass) {
    EXPECT_EQ(LogSiteFreeFunction(""), "LogSiteFreeFunction");
}

TEST(LogFunctionName, ExcludesTheReturnType) {
    LogSiteSample sample;
    std::string name;
    sample.Pointer(&name);
    EXPECT_EQ(name, "LogSiteSample::Pointer");
    sample.Reference(&name);
    EXPECT_EQ(name, "LogSiteSample::Reference");
    sample.Template(&name);
    EXPECT_EQ(name, "LogSiteSample::Template");
    sample.Callable(&name);
    EXPECT_EQ(name, "LogSiteSample::Callable");
}

} // namespace
