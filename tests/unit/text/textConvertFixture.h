// The converter's script at its beginning, with its requests kept.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kit/siblings/scriptedSiblings.h"
#include "text/textConvert.h"

class TextConvert : public testing::Test {
protected:
    void SetUp() override {
        siblings.Reset();
        siblings.keepsConversions = true;
    }

    // "narrow to wide codepage=65001 length=…"
    static std::string Request(const char* direction, size_t length, size_t capacity) {
        return std::string(direction) + " codepage=65001 length=" + std::to_string(length) +
               " capacity=" + std::to_string(capacity) + " reserved=0";
    }

    kit::ScriptedSiblings& siblings = kit::ScriptedSiblings::Instance();
};
