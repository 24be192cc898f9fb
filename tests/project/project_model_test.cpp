// The project record and theProj: creation, deletion with all it owns, and
// the small getters.
#include "project_support.hpp"
#include "support/test_dist.hpp"

#include <gtest/gtest.h>

namespace {

class ProjectModel : public testing::Test {
  protected:
    void SetUp() override { ResetProjectState(); }
    void TearDown() override { ResetProjectState(); }
};

TEST_F(ProjectModel, NewEmptyDeletesTheCurrentProjectWithAllItOwns) {
    VlProject *first = VlProjNewEmpty();
    first->name = strdup("first");
    first->options = MakeList({"A : 1", "B : 2"});
    first->mainModule->declarations = strdup("int x;");
    VlHtmlDoc *doc = VlHtmlNew();
    VlHtmlSetName(doc, "a.html");
    SutAddList(first->htmlDocs, doc);
    SpmAddSPBind();
    VlProject *second = VlProjNewEmpty(); // the sanitizer build checks nothing leaks
    EXPECT_EQ(theProj, second);
    EXPECT_EQ(SpmGetMapContext(), nullptr); // the map goes with the project
    VlProjDelete();
    EXPECT_EQ(theProj, nullptr);

    // A project that is not current is not deleted.
    first = VlProjNewEmpty();
    VlProjSetDefault(nullptr);
    second = VlProjNewEmpty();
    VlProjSetDefault(first);
    VlProjDelete();
    VlProjSetDefault(second);
}

} // namespace
