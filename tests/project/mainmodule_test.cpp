// The main module record: reading the user's regions back, and its setters.
#include "support/test_dist.hpp"

TEST(MainModule, ReadsTheThreeUserRegions) {
    Workspace ws;
    ws.write("main.c", "#include <stdio.h>\n"
                       "/* Velmora Start Of User Includes */\n#include \"a.h\"\r\nint g;\n"
                       "/* Velmora End Of User Includes */\n"
                       "/* Velmora Start Of Callback Declarations */\nextern void R_x ();\n"
                       "/* Velmora End Of Callback Declarations */\n"
                       "int main() {\n\t/* Velmora Start Of Initial Code */\n\tstart();\n"
                       "\t/* Velmora End Of Initial Code */\n"
                       "\t/* Velmora Start Of Callback Registration */\n\tR_x ();\n"
                       "\t/* Velmora End Of Callback Registration */\n"
                       "\t/* Velmora Start Of Final Code */\n"
                       "\t/* Velmora End Of Final Code */\n}\n");
    EXPECT_EQ(VlMainModuleRead("main.c"), 1);
    VlMainModule *main = theProj->mainModule;
    EXPECT_STREQ(main->declarations, "#include \"a.h\"\r\nint g;\n");
    EXPECT_STREQ(main->initialCode, "\tstart();\n");
    EXPECT_STREQ(main->finalCode, "");
    EXPECT_EQ(main->modTime, VlGetFileModTime("main.c"));

    // A region whose start line is missing (the tab matters) gives null, and
    // the search goes on from where it was.
    ws.write("odd.c", "/* Velmora Start Of Initial Code */\nx\n/* Velmora End Of Initial Code */\n"
                      "\t/* Velmora Start Of Final Code */\nlast\n");
    EXPECT_EQ(VlMainModuleRead("odd.c"), 1);
    EXPECT_EQ(main->declarations, nullptr);
    EXPECT_EQ(main->initialCode, nullptr);
    EXPECT_STREQ(main->finalCode, "last\n");

    EXPECT_EQ(printed([] { EXPECT_EQ(VlMainModuleRead(nullptr), 0); }),
              "Could not read file in VlMainModuleRead:\n");
}

TEST(MainModule, SettersMarkTheProjectChanged) {
    Workspace ws;
    EXPECT_EQ(VlMainModuleNew(), nullptr);
    EXPECT_EQ(VlProjMainSetDeclarations("#include <a.h>\n"), 1);
    EXPECT_EQ(theProj->saved, 0);
    EXPECT_STREQ(VlProjMainGetDeclarations(), "#include <a.h>\n");
    EXPECT_EQ(VlProjMainSetFinalCode("fini"), 1);
    // The previous text stays valid for a caller that still holds it.
    char *held = VlProjMainGetFinalCode();
    EXPECT_EQ(VlProjMainSetFinalCode("again"), 1);
    EXPECT_EQ(take(held), "fini");
}
