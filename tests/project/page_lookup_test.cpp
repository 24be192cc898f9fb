// Looking pages up by name through the index of a lookup session gives what
// the walk of the project's pages gives: the first page of that name.
#include "velmora.h"

#include <gtest/gtest.h>

namespace {

TEST(PageLookups, TheIndexAnswersAsTheWalkDoes) {
    VlProjNewEmpty();
    VlHtmlDoc *pages[4];
    const char *names[4] = {"a.html", "b.html", "a.html", nullptr};
    for (int i = 0; i < 4; i++) {
        pages[i] = VlHtmlNew();
        if (names[i]) VlHtmlSetName(pages[i], names[i]);
        SutAddList(theProj->htmlDocs, pages[i]);
    }
    for (int pass = 0; pass < 3; pass++) {
        if (pass == 1) VlProjBeginPageLookups();
        if (pass == 2) VlProjEndPageLookups();
        SCOPED_TRACE(pass);
        EXPECT_EQ(VlProjGetHtml("a.html"), pages[0]);
        EXPECT_EQ(VlProjGetHtml("b.html"), pages[1]);
        EXPECT_EQ(VlProjGetHtml("c.html"), nullptr);
    }
    // A session follows the project that is current when it looks up.
    VlProjBeginPageLookups();
    EXPECT_EQ(VlProjGetHtml("b.html"), pages[1]);
    VlProjNewEmpty();
    EXPECT_EQ(VlProjGetHtml("b.html"), nullptr);
    VlProjEndPageLookups();
    VlProjDelete();
}

} // namespace
