// SPDX-License-Identifier: MIT
// Base of the tests that call our primitives through the bound IPP-named variables.
#pragma once

#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/FXRealIpp.h"

#include <gtest/gtest.h>

namespace framix::test {

// Starts the primitive layer; skips when FRAMIX_USE_IPP=1 bound the names to Intel's
// functions (these tests are about ours).
class TFXBoundPrimitivesTest : public testing::Test {
protected:
    void SetUp() override
    {
        FXStartPrimitiveLayer();
        if (FXRealIppActive())
            GTEST_SKIP() << "the variables are bound to the real IPP";
    }
};

} // namespace framix::test
