// Work calls on file objects (a flat file, a program's output, a registered
// function) and the configuration file that overrides the setup calls.
#include "runtime/file_objects.hpp"
#include "runtime/request_state.hpp"
#include "runtime/settings.hpp"
#include "runtime/VlRnHtml.h"
#include "support/temp_dir.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

// The work call's rows as "a|b;c|d;".
std::string rows(pSgeWorkCallData call) {
    std::string out;
    for (int r = 0; r < VlGetRowCount(call); r++) {
        for (int c = 0; c < VlGetColumnCount(call); c++)
            out += std::string(c ? "|" : "") + VlGetValue(call, r, c);
        out += ";";
    }
    return out;
}

int twoRows(pSgeWorkCallData call) {
    const char *first[] = {VlGetArgValue(call, "who"), "x"};
    const char *second[] = {"y"};
    return VlAddRow(call, 2, first) || VlAddRow(call, 1, second) ? 1 : 0;
}

TEST(FileObjects, LinesBecomeRows) {
    EXPECT_EQ(vlrun::splitLine("a,b,,c", ',', {}), (std::vector<std::string>{"a", "b", "", "c"}));
    EXPECT_EQ(vlrun::splitLine("abcdefg", ',', {2, 3, 1}),
              (std::vector<std::string>{"ab", "cde", "fg"}));
    EXPECT_EQ(vlrun::splitLine("a,b", 0, {}), (std::vector<std::string>{"a,b"}));

    TempDir dir;
    vlrun::RequestState request;
    vlrun::setCurrentRequest(&request);
    pSgeWorkCallData file = getSgeWorkCallData(nullptr, 2, "", "",
                                               dir.write("rows.txt", "1,a\r\n2\n3,c\n").c_str(),
                                               READ_FILE);
    VlVaSetReqOptions(file, "Delimiter : ,", VULL);
    EXPECT_EQ(DoWorkProc(file, PROCESSBRSREQUEST_DSQL), 0);
    EXPECT_EQ(rows(file), "1|a;2|;"); // two rows at most

    pSgeWorkCallData program = getSgeWorkCallData(nullptr, 0, "", "", "/bin/echo", READ_EXEC);
    VlVaSetReqOptions(program, "Delimiter : <spc>", VULL);
    SgeSetArgBnd2(program, 12, 10, "a", "varchar", "one;two");
    SgeSetArgBnd2(program, 12, 10, "b", "varchar", "$(x)");
    EXPECT_EQ(DoWorkProc(program, PROCESSBRSREQUEST_DSQL), 0);
    EXPECT_EQ(rows(program), "one;two|$(x);"); // no shell in between

    VlRegisterFunction("twoRows", twoRows);
    pSgeWorkCallData function = getSgeWorkCallData(nullptr, 0, "", "", "twoRows", EXEC_FUNCTION);
    SgeSetArgBnd2(function, 12, 10, "who", "varchar", "me");
    EXPECT_EQ(DoWorkProc(function, PROCESSBRSREQUEST_DSQL), 0);
    EXPECT_EQ(rows(function), "me|x;y|;");

    pSgeWorkCallData missing = getSgeWorkCallData(nullptr, 0, "", "", "/nowhere", READ_FILE);
    EXPECT_EQ(DoWorkProc(missing, PROCESSBRSREQUEST_DSQL), -1);
    EXPECT_EQ(request.fault.status, 500);
    EXPECT_EQ(request.fault.detail, "work call /nowhere of ?: cannot read /nowhere");
    // After a failure no further work call runs.
    EXPECT_EQ(DoWorkProc(file, PROCESSBRSREQUEST_DSQL), -1);
    vlrun::setCurrentRequest(nullptr);
}

TEST(Settings, TheConfigurationFileOverridesTheSetupCalls) {
    TempDir dir;
    VlInitHeaders();
    VlSetHtmlDir("www");
    VlSetDefaultVendor(SGESQLITE);
    VlSetConfigFile(dir.write("app.cfg", "Project.Print Form Args : True\n"
                                         "HTML Path : c:/srv/www\nDatabase Vendor : ORACLE\n"
                                         "Database Name : other\nnot an option\n")
                        .c_str());
    vlrun::readConfigFile(vlrun::settings()); // not allowed yet
    EXPECT_EQ(vlrun::settings().htmlDir, "www");
    VlAllowConfigFile(1);
    vlrun::readConfigFile(vlrun::settings());
    const vlrun::Settings &s = vlrun::settings();
    EXPECT_TRUE(s.printArgs);
    EXPECT_EQ(s.htmlDir, "/srv/www");
    EXPECT_EQ(s.vendor, SGEORACLE);
    EXPECT_EQ(s.vendorName, "ORACLE");
    EXPECT_EQ(s.database, "other");
    VlInitHeaders();
}

} // namespace
