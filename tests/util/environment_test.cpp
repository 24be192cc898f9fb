// The environment, the distribution directory and the message printers.
#include "support/capture.hpp"
#include "support/c_values.hpp"
#include "support/temp_dir.hpp"
#include "util/environment.h"
#include "util/messages.h"

#include <gtest/gtest.h>

namespace {

TEST(Environment, ValuesAreNeverNullAndTheDistributionIsReadOnce) {
    ScopedEnv var("VL_TEST_VALUE", nullptr);
    EXPECT_EQ(Take(VlGetEnv("VL_TEST_VALUE")), "");
    EXPECT_EQ(Take(VlGetEnv(nullptr)), "");

    ScopedEnv velmora("VELMORA", "C:\\velmora\\\\");
    VlResetDistDir();
    EXPECT_STREQ(VlGetDistDir(), "C:\\velmora\\"); // only one separator is removed
    EXPECT_EQ(VlGetDistDir(), theDistDir);
    velmora.Set("/elsewhere");
    char *copy = GetVelmoraDir();
    EXPECT_STREQ(copy, "C:\\velmora\\"); // read once
    EXPECT_NE(copy, theDistDir);
    free(copy);
    VlResetDistDir();
    velmora.Set(nullptr);
    EXPECT_EQ(VlGetDistDir(), nullptr);
}

TEST(Messages, PrintersAndCatalog) {
    EXPECT_EQ(Printed([] {
                  VlPrintError("no newline");
                  VlPrintError(nullptr);
                  VlPrintError(" and %s\n");
                  VlGUIError("line");
              }),
              "no newline and %s\nline\n");
    const char *text = "default";
    EXPECT_EQ(VlCatGets(10, 2, text), text); // the text itself, not a copy
    EXPECT_STREQ(GCatb(1, 2), " ");
}

} // namespace
