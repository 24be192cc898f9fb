// The main module record: reading the user's regions back, and its setters.
#include "support/file_texts.hpp"
#include "support/test_dist.hpp"

TEST(MainModule, ReadsTheThreeUserRegions) {
    Workspace ws;
    using namespace MainRegions;
    ws.Write("main.c", "#include <stdio.h>\n" + IS + "#include \"a.h\"\r\nint g;\n" + IE + DS +
                           "extern void R_x ();\n" + DE + "int main() {\n" + InS + "\tstart();\n" +
                           InE + RS + "\tR_x ();\n" + RE + FS + FE + "}\n");
    EXPECT_EQ(VlMainModuleRead("main.c"), 1);
    VlMainModule *main = theProj->mainModule;
    EXPECT_STREQ(main->declarations, "#include \"a.h\"\r\nint g;\n");
    EXPECT_STREQ(main->initialCode, "\tstart();\n");
    EXPECT_STREQ(main->finalCode, "");
    EXPECT_EQ(main->modTime, VlGetFileModTime("main.c"));
    // A region whose start line is missing (the tab matters) gives null, and
    // the search goes on from where it was.
    ws.Write("odd.c",
             "/* Velmora Start Of Initial Code */\nx\n/* Velmora End Of Initial Code */\n" + FS +
                 "last\n");
    EXPECT_EQ(VlMainModuleRead("odd.c"), 1);
    EXPECT_EQ(main->initialCode, nullptr);
    EXPECT_STREQ(main->finalCode, "last\n");
    EXPECT_EQ(Printed([] { EXPECT_EQ(VlMainModuleRead(nullptr), 0); }),
              "Could not read file in VlMainModuleRead:\n");
}

TEST(MainModule, SettersMarkTheProjectChanged) {
    Workspace ws;
    EXPECT_EQ(VlProjMainSetFinalCode("fini"), 1);
    EXPECT_EQ(theProj->saved, 0);
    // The previous text stays valid for a caller that still holds it.
    char *held = VlProjMainGetFinalCode();
    EXPECT_EQ(VlProjMainSetFinalCode("again"), 1);
    EXPECT_EQ(Take(held), "fini");
}
