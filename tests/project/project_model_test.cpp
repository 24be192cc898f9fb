// The project record and theProj, the distribution directory and the small
// environment and message helpers.
#include "project_support.hpp"
#include "support/test_dist.hpp"

#include <gtest/gtest.h>

namespace {

class ProjectModel : public testing::Test {
  protected:
    void SetUp() override { resetProjectState(); }
    void TearDown() override { resetProjectState(); }
};

TEST_F(ProjectModel, NewEmptyProjectIsCurrent) {
    VlProject *project = VlProjNewEmpty();
    ASSERT_NE(project, nullptr);
    EXPECT_EQ(theProj, project);
    EXPECT_EQ(VlProjGetDefault(), project);
    EXPECT_EQ(project->saved, 1);
    ASSERT_NE(project->mainModule, nullptr);
    EXPECT_EQ(SutSizList(project->htmlDocs), 0); // empty lists, not none
    EXPECT_EQ(SutSizList(project->modules), 0);
    EXPECT_EQ(VlProjGetOptions(), nullptr);
    EXPECT_EQ(VlProjGetName(), nullptr);

    SutList *options = makeList({"A : 1"});
    VlProjSetOptions(options);
    EXPECT_EQ(VlProjGetOptions(), options);
    project->name = strdup("shop");
    EXPECT_STREQ(VlProjGetName(), "shop");
}

TEST_F(ProjectModel, NewEmptyDeletesTheCurrentProjectWithAllItOwns) {
    VlProject *first = VlProjNewEmpty();
    first->name = strdup("first");
    first->options = makeList({"A : 1", "B : 2"});
    first->mainModule->declarations = strdup("int x;");
    first->mainModule->finalCode = strdup("x = 0;");
    VlHtmlDoc *doc = VlHtmlNew();
    VlHtmlSetName(doc, "a.html");
    SutAddList(first->htmlDocs, doc);
    VlProject *second = VlProjNewEmpty(); // the sanitizer build checks nothing leaks
    EXPECT_EQ(theProj, second);
    EXPECT_EQ(second->name, nullptr);
    VlProjDelete();
    EXPECT_EQ(theProj, nullptr);
    EXPECT_EQ(VlProjGetOptions(), nullptr);
    VlProjDelete(); // nothing current: nothing happens
    EXPECT_EQ(theProj, nullptr);
}

TEST_F(ProjectModel, SetDefaultReplacesWithoutDeleting) {
    VlProject *first = VlProjNewEmpty();
    VlProjSetDefault(nullptr);
    VlProject *second = VlProjNewEmpty(); // first is not current: it survives
    EXPECT_EQ(first->saved, 1);
    VlProjSetDefault(first);
    EXPECT_EQ(VlProjGetDefault(), first);
    VlProjDelete();
    VlProjSetDefault(second);
}

TEST_F(ProjectModel, EnvironmentValuesAreNeverNull) {
    EnvVar var("VL_TEST_VALUE", "v 1");
    EXPECT_EQ(take(VlGetEnv("VL_TEST_VALUE")), "v 1");
    var.set(nullptr);
    EXPECT_EQ(take(VlGetEnv("VL_TEST_VALUE")), "");
    EXPECT_EQ(take(VlGetEnv("")), "");
    EXPECT_EQ(take(VlGetEnv(nullptr)), "");
}

TEST_F(ProjectModel, DistributionDirectoryReadOnce) {
    EnvVar velmora("VELMORA", "/opt/velmora/");
    EXPECT_STREQ(VlGetDistDir(), "/opt/velmora");
    EXPECT_EQ(VlGetDistDir(), theDistDir);
    velmora.set("/elsewhere");
    EXPECT_STREQ(VlGetDistDir(), "/opt/velmora");
    char *copy = GetVelmoraDir();
    EXPECT_STREQ(copy, "/opt/velmora");
    EXPECT_NE(copy, theDistDir);
    free(copy);

    VlResetDistDir();
    velmora.set("C:\\velmora\\\\");
    EXPECT_STREQ(VlGetDistDir(), "C:\\velmora\\"); // only one is removed
    VlResetDistDir();
    velmora.set("/");
    EXPECT_STREQ(VlGetDistDir(), "");
    VlResetDistDir();
    velmora.set(nullptr);
    EXPECT_EQ(VlGetDistDir(), nullptr);
    EXPECT_EQ(GetVelmoraDir(), nullptr);
}

TEST_F(ProjectModel, PrintErrorWritesExactlyItsText) {
    EXPECT_EQ(printed([] {
                  VlPrintError("no newline");
                  VlPrintError(nullptr);
                  VlPrintError(" and %s\n");
              }),
              "no newline and %s\n");
}

} // namespace
