// Generating the project's makefile from Makefile.tem: the twelve tokens in
// their order, the module list with its line continuations, the executable
// suffix, an unknown token, and the failures that leave the makefile alone.
#include "project_support.hpp"
#include "run_support.hpp"
#include "support/temp_dir.hpp"

#include <string>

namespace {

const char kAllTokens[] = "S=$VL_SOURCE_SUFFIX L=$VL_LANGUAGE D=$VL_DEPLOYMENT_TARGET\n"
                          "E=$VL_EXECUTABLE C=$VL_USER_CFLAGS LD=$VL_USER_LD_FLAGS\n"
                          "O=$VL_APPL_OBJS A=$VL_APPL_LIBS Y=$VL_SYSTEM_LIBS T=$VL_CGI_TARGET\n"
                          "M=$VL_MAIN\nMODULES = \\\n$VL_MODULES# end\n";

TEST(Makefile, EveryTokenIsFilledAndModulesAreContinuedLines) {
    Workspace ws;
    WriteTemplate("Makefile.tem", kAllTokens);
    VlProjSetName("shop");
    AddModule(AddPage("a.html", {}));
    AddModule(AddPage("b.htm", {}));
    AddModule(AddPage("c", {}));
    SetOptions({"Makefile.$VL_SOURCE_SUFFIX : .cc", "Makefile.$VL_LANGUAGE : C",
                "Makefile.$VL_DEPLOYMENT_TARGET : CGI", "Makefile.exeSuffix : .cgi",
                "Makefile.$VL_USER_CFLAGS : -O2 -g", "Makefile.$VL_USER_LD_FLAGS : -s",
                "Makefile.$VL_APPL_OBJS : x.o", "Makefile.$VL_APPL_LIBS : -lx",
                "Makefile.$VL_SYSTEM_LIBS : -lm", "Makefile.$VL_CGI_TARGET : #proj.cgi"});
    EXPECT_EQ(VlProjWriteMakefile(), 1);
    EXPECT_EQ(ws.Read("shop.mak"), "S=.cc L=C D=CGI\n"
                                   "E=shop.cgi C=-O2 -g LD=-s\n"
                                   "O=x.o A=-lx Y=-lm T=shop.cgi\n"
                                   "M=shop.cc\nMODULES = \\\n\ta.cc\\\n\tb.cc\\\n\tc.cc\n# end\n");

    // Absent options are empty, the suffix defaults to .exe, no modules give
    // nothing; the main file falls back to the global source suffix.
    VlProjDelete();
    VlProjNewEmpty();
    VlProjSetName("shop");
    EXPECT_EQ(VlProjWriteMakefile(), 1);
    EXPECT_EQ(ws.Read("shop.mak"), "S=.c L= D=\nE=shop.exe C= LD=\nO= A= Y= T=\n"
                                   "M=shop.c\nMODULES = \\\n# end\n");

    // An unknown token takes the text of the last token and as many
    // characters of the template are skipped.
    WriteTemplate("Makefile.tem", "x $VL_FOO yyyy $VL_MAIN\n");
    EXPECT_EQ(VlProjWriteMakefile(), 1);
    EXPECT_EQ(ws.Read("shop.mak"), "x $VL_MODULESy shop.c\n");
}

TEST(Makefile, FailuresLeaveThePreviousMakefile) {
    Workspace ws;
    VlProjSetName("shop");
    ws.Write("shop.mak", "previous\n");
    TempDir elsewhere;
    EnvVar velmora("VELMORA", elsewhere.Path().c_str());
    VlResetDistDir();
    std::string out = Printed([] { EXPECT_EQ(VlProjWriteMakefile(), 0); });
    EXPECT_EQ(out, "Could find makefile template in VlProjWriteMakeFile " + elsewhere.Path() +
                       "/config/Makefile.tem\n");
    EXPECT_EQ(ws.Read("shop.mak"), "previous\n");
    velmora.Set(TestDistribution().c_str());
    VlResetDistDir();
}

} // namespace
