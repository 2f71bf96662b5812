// Makes a case smaller as long as it shows what it showed.
#pragma once

#include <functional>

#include "model/testCase.h"

namespace model {

// Takes operations and rules away, one at a time, while `shows` stays true of the rest.
TestCase Reduced(TestCase testCase, const std::function<bool(const TestCase&)>& shows);

} // namespace model
