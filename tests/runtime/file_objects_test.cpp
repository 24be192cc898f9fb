// Records cut into columns, a flat file's rows within the row limit, a
// failing file object stopping the request, and the configuration file
// that overrides the setup calls (file_objects_program_test.cpp runs every
// file object through generated activators).
#include "runtime/file_objects.hpp"
#include "runtime/program_output.hpp"
#include "runtime/request_state.hpp"
#include "runtime/settings.hpp"
#include "runtime/VlRnHtml.h"
#include "support/temp_dir.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

// The work call's rows as "a|b;c|d;".
std::string Rows(pSgeWorkCallData call) {
    std::string out;
    for (int r = 0; r < VlGetRowCount(call); r++) {
        for (int c = 0; c < VlGetColumnCount(call); c++)
            out += std::string(c ? "|" : "") + VlGetValue(call, r, c);
        out += ";";
    }
    return out;
}

TEST(FileObjects, LinesBecomeRows) {
    EXPECT_EQ(vlrun::SplitLine("a,b,,c", ',', {}), (std::vector<std::string>{"a", "b", "", "c"}));
    EXPECT_EQ(vlrun::SplitLine("abcdefg", ',', {2, 3, 1}),
              (std::vector<std::string>{"ab", "cde", "fg"}));
    EXPECT_EQ(vlrun::SplitLine("\xC3\xA9\xC3\xA9x", ',', {1, 5}),
              (std::vector<std::string>{"\xC3\xA9", "\xC3\xA9x"}));
    EXPECT_EQ(vlrun::SplitLine("a,b", 0, {}), (std::vector<std::string>{"a,b"}));

    TempDir dir;
    vlrun::RequestState request;
    vlrun::SetCurrentRequest(&request);
    pSgeWorkCallData file = getSgeWorkCallData(nullptr, 2, "", "",
                                               dir.Write("rows.txt", "1,a\r\n2\n3,c\n").c_str(),
                                               READ_FILE);
    VlVaSetReqOptions(file, "Delimiter : ,", VULL);
    EXPECT_EQ(DoWorkProc(file, PROCESSBRSREQUEST_DSQL), 0);
    EXPECT_EQ(Rows(file), "1|a;2|;"); // two rows at most

    pSgeWorkCallData missing = getSgeWorkCallData(nullptr, 0, "", "", "/nowhere", READ_FILE);
    EXPECT_EQ(DoWorkProc(missing, PROCESSBRSREQUEST_DSQL), -1);
    EXPECT_EQ(request.fault.status, 500);
    EXPECT_EQ(request.fault.detail, "work call /nowhere of ?: cannot read /nowhere");
    // After a failure no further work call runs.
    EXPECT_EQ(DoWorkProc(file, PROCESSBRSREQUEST_DSQL), -1);
    vlrun::SetCurrentRequest(nullptr);
}

TEST(FileObjects, ProgramsAreStoppedAtTheirOutputLimitAndReportedBySignal) {
    std::string output, why;
    vlrun::ProgramLimits limits;
    limits.outputBytes = 1000;
    EXPECT_FALSE(vlrun::ProgramOutput({"/usr/bin/yes", "abc"}, limits, output, why));
    EXPECT_EQ(why, "wrote more than 1000 bytes");
    EXPECT_EQ(output.substr(0, 8), "abc\nabc\n");
    output.clear();
    EXPECT_FALSE(vlrun::ProgramOutput({"/bin/sh", "-c", "echo partial; kill -9 $$"}, {}, output, why));
    EXPECT_EQ(why, "was killed by signal 9");
    EXPECT_EQ(output, "partial\n");
}

TEST(Settings, TheConfigurationFileOverridesTheSetupCalls) {
    TempDir dir;
    VlInitHeaders();
    VlSetHtmlDir("www");
    VlSetDefaultVendor(SGESQLITE);
    VlSetConfigFile(dir.Write("app.cfg", "Project.Print Form Args : True\n"
                                         "HTML Path : c:/srv/www\nDatabase Vendor : ORACLE\n"
                                         "Database Name : other\nnot an option\n")
                        .c_str());
    vlrun::ReadConfigFile(vlrun::TheSettings()); // not allowed yet
    EXPECT_EQ(vlrun::TheSettings().htmlDir, "www");
    VlAllowConfigFile(1);
    vlrun::ReadConfigFile(vlrun::TheSettings());
    const vlrun::Settings &s = vlrun::TheSettings();
    EXPECT_TRUE(s.printArgs);
    EXPECT_EQ(s.htmlDir, "/srv/www");
    EXPECT_EQ(s.vendor, SGEORACLE);
    EXPECT_EQ(s.vendorName, "ORACLE");
    EXPECT_EQ(s.database, "other");
    VlInitHeaders();
}

} // namespace
