// The documents in examples/: each fits the schema that its name tells.
#include <sstream>

#include <gtest/gtest.h>

#include "docs/sourceTree.h"
#include "schema/schemaFile.h"
