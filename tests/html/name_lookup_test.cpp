// Lookups of forms and anchors by name answer the same through the index of
// a lookup session as through the walk of the page's lists: the first record
// met wins, whether it matches by full name or, unnamed, by its URL.
#include "velmora.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

namespace {

TEST(NameLookups, TheIndexAnswersAsTheWalkDoes) {
    VlHtmlDoc *doc = VlHtmlNew();
    VlHtmlSetName(doc, "p.html");
    doc->forms = SutNewList();
    doc->anchors = SutNewList();
    // Forms: unnamed with action "a", named a, named b, unnamed with action
    // "b", a second named b, a null entry, unnamed without action.
    VlHtmlForm *f[6];
    for (VlHtmlForm *&form : f)
        form = VlHtmlFormNew();
    f[0]->action = strdup("a");
    SutAddList(doc->forms, f[0]);
    for (int i : {1, 2}) {
        SutAddList(doc->forms, f[i]);
        VlHtmlFormSetName(doc, f[i], i == 1 ? "a" : "b");
    }
    f[3]->action = strdup("b");
    SutAddList(doc->forms, f[3]);
    SutAddList(doc->forms, f[4]);
    f[4]->fullName = strdup("b__Fp_html");
    SutAddList(doc->forms, nullptr);
    SutAddList(doc->forms, f[5]);
    VlHtmlAnch *a[3];
    for (VlHtmlAnch *&anchor : a)
        anchor = VlHtmlAnchNew();
    a[0]->url = strdup("x");
    a[1]->fullName = strdup("x__Ap_html");
    a[2]->fullName = strdup("y__Ap_html");
    for (VlHtmlAnch *anchor : a)
        SutAddList(doc->anchors, anchor);
    a[2]->url = strdup("x"); // a named anchor never matches by URL

    for (int pass = 0; pass < 3; pass++) {
        if (pass == 1) VlHtmlBeginNameLookups(doc);
        if (pass == 2) VlHtmlEndNameLookups();
        SCOPED_TRACE(pass);
        EXPECT_EQ(VlHtmlGetFormByName(doc, "a"), f[0]);
        EXPECT_EQ(VlHtmlGetFormByName(doc, "b"), f[2]);
        EXPECT_EQ(VlHtmlGetFormByName(doc, "c"), nullptr);
        EXPECT_EQ(VlHtmlGetAnchByName(doc, "x"), a[0]);
        EXPECT_EQ(VlHtmlGetAnchByName(doc, "y"), a[2]);
        EXPECT_EQ(VlHtmlGetAnchByName(doc, "a"), nullptr);
    }
    VlHtmlDelete(doc);
}

} // namespace
