// The document model: naming rules, lookups, generated names and change flags.
#include "support/capture.hpp"
#include "html_support.hpp"

#include <gtest/gtest.h>

namespace {

class Document : public testing::Test {
  protected:
    void SetUp() override {
        VlHtmlResetProjName();
        doc_ = Scan(" <FORM ACTION=\"a.cgi\" METHOD=\"get\"><INPUT NAME=\"q\"><INPUT TYPE=x>"
                    "</FORM> <FORM ACTION=\"b.cgi\"></FORM> <A HREF=\"u1\">1</A>"
                    " <A HREF=\"p?FNC=top__Ashop_html\">2</A> ##Vl_site4## ##Vl_## ##Vl_x9##");
        VlHtmlSetName(doc_.get(), "dir/my-shop.v2.html");
    }
    void TearDown() override { VlHtmlResetProjName(); }
    DocPtr doc_;
};

TEST_F(Document, ModuleNameAndDefaultProjectUrl) {
    EXPECT_EQ(Str(VlHtmlGetModName(doc_.get())), "my_shop_v2_html");
    EXPECT_EQ(Str(VlHtmlGetProjName()), "http://localhost/cgi-bin/");
    EXPECT_EQ(VlHtmlSetProjName(""), 0);
    EXPECT_EQ(Str(VlHtmlGetProjName()), "http://localhost/cgi-bin/");
}

TEST_F(Document, NamingAFormResetsMethodAndAction) {
    VlHtmlForm *form = FormAt(doc_.get(), 0);
    EXPECT_EQ(VlHtmlFormSetName(doc_.get(), form, ""), 1);
    EXPECT_EQ(FlagsOf(doc_.get()), "0000");
    EXPECT_EQ(VlHtmlFormSetName(doc_.get(), form, "order"), 0);
    EXPECT_EQ(FormsOf(doc_.get())[0], "order__Fmy_shop_v2_html|http://localhost/cgi-bin/|post");
    EXPECT_EQ(FlagsOf(doc_.get()), "1100");
    EXPECT_EQ(Take(VlHtmlFormGetFuncName(form)), "Forder");
    EXPECT_EQ(VlHtmlFormGetName(FormAt(doc_.get(), 1)), nullptr);

    VlHtmlAnch *anchor = AnchAt(doc_.get(), 0);
    EXPECT_EQ(VlHtmlAnchSetName(doc_.get(), anchor, "go"), 0);
    EXPECT_EQ(AnchorsOf(doc_.get())[0], "go__Amy_shop_v2_html|http://localhost/cgi-bin/");
    EXPECT_EQ(FlagsOf(doc_.get()), "1110");
    // A full name without the anchor mark has no short name.
    VlHtmlAnch odd{};
    odd.fullName = const_cast<char *>("top__Fshop_html");
    EXPECT_EQ(VlHtmlAnchGetFuncName(&odd), nullptr);
}

TEST_F(Document, LookupsByNameAndByAction) {
    VlHtmlNameFormByPos(doc_.get(), 0, "order");
    EXPECT_EQ(VlHtmlGetFormByName(doc_.get(), "order"), FormAt(doc_.get(), 0));
    // An unnamed form is found by its ACTION, deliberately.
    EXPECT_EQ(VlHtmlGetFormByName(doc_.get(), "b.cgi"), FormAt(doc_.get(), 1));
    EXPECT_EQ(VlHtmlGetFormByName(doc_.get(), "a.cgi"), nullptr);
    EXPECT_EQ(VlHtmlIsUniqueFormName(doc_.get(), "order"), 0);
    EXPECT_EQ(VlHtmlNameForm(doc_.get(), "b.cgi", "second"), 0);
    EXPECT_EQ(VlHtmlNameForm(doc_.get(), "nothing", "third"), 1);
    EXPECT_EQ(TakeList(VlHtmlGetForms(doc_.get())), (Strings{"order", "second"}));
    SutList *elems = VlHtmlGetFormElems(doc_.get(), "order");
    EXPECT_EQ(Items(elems), (Strings{"q"}));
    SutDeleteList(elems);
}

TEST_F(Document, ListsOfUnnamedRecords) {
    SutAddList(doc_->forms, VlHtmlFormNew());
    EXPECT_EQ(TakeList(VlHtmlGetForms(doc_.get())),
              (Strings{" ACTION=a.cgi", " ACTION=b.cgi", " ACTION="}));
    VlHtmlAnch *keyword = VlHtmlAnchNew();
    keyword->urlAttr = strdup("SRC");
    keyword->url = strdup("pic");
    SutAddList(doc_->anchors, keyword);
    VlHtmlAnch *oddName = VlHtmlAnchNew();
    oddName->fullName = strdup("plain");
    SutAddList(doc_->anchors, oddName);
    EXPECT_EQ(TakeList(VlHtmlGetAnchs(doc_.get())),
              (Strings{" HREF=u1", "top", " SRC=pic", "plain"}));
    SutList *sites = VlHtmlGetSites(doc_.get());
    EXPECT_EQ(Items(sites), (Strings{"site4", "x9"}));
    SutDeleteList(sites);
}

TEST_F(Document, GeneratedNamesAndSiteNumbers) {
    VlHtmlNameFormByPos(doc_.get(), 1, "kept");
    EXPECT_EQ(VlHtmlGenFormNames(doc_.get()), 0);
    EXPECT_EQ(FormsOf(doc_.get())[0], "form0__Fmy_shop_v2_html|http://localhost/cgi-bin/|post");
    EXPECT_EQ(VlHtmlGenAnchNames(doc_.get()), 0);
    EXPECT_EQ(AnchorsOf(doc_.get()),
              (Strings{"anch0__Amy_shop_v2_html|http://localhost/cgi-bin/", "top__Ashop_html|p"}));
    // Sites count on from the highest number read.
    EXPECT_EQ(VlSetLastSiteNumber(doc_.get()), 1);
    EXPECT_EQ(VlHtmlGenSiteNames(doc_.get()), 0);
    EXPECT_EQ(SitesOf(doc_.get()), (Strings{"site4", "site5", "x9"}));
    EXPECT_EQ(FlagsOf(doc_.get()), "1111");
}

TEST_F(Document, UrlChangesAndSaveState) {
    VlHtmlForm *form = FormAt(doc_.get(), 0);
    EXPECT_EQ(VlHtmlSetFormURL(doc_.get(), form, "a.cgi"), 1); // the same URL: no change
    EXPECT_EQ(VlHtmlNeedsSave(doc_.get()), 0);
    EXPECT_EQ(VlHtmlSetFormURL(doc_.get(), form, ""), 0);
    EXPECT_EQ(VlHtmlSetAnchURL(doc_.get(), AnchAt(doc_.get(), 0), "v"), 1);
    EXPECT_EQ(FlagsOf(doc_.get()), "1010");
    EXPECT_EQ(VlHtmlNeedsSave(doc_.get()), 1);
}

TEST_F(Document, OrigNamesAndSplit) {
    VlHtmlMarkOrigNames(doc_.get());
    VlHtmlNameFormByPos(doc_.get(), 0, "n");
    VlHtmlForm *form = FormAt(doc_.get(), 0);
    EXPECT_EQ(Str(form->origAction) + Str(form->origFullName), "a.cgi<null>");
    EXPECT_EQ(Str(AnchAt(doc_.get(), 1)->origFullName), "top__Ashop_html");
    char *rest = nullptr, *shortName = nullptr, type = 0;
    ASSERT_EQ(VlHtmlSplitFuncName("my__name__Fshop_html", &rest, &type, &shortName), 1);
    EXPECT_EQ(*Take(shortName) + "|" + type + "|" + *Take(rest), "my|n|ame__Fshop_html");
}

// A page's lists live with its records: they take records made on their own
// and grow like any list, and a form taken out of the page is deleted on its
// own (the sanitizer build checks that nothing of the page is freed twice
// and nothing grown is lost).
TEST_F(Document, PageListsGrowAndGoWithThePage) {
    VlHtmlForm *form = FormAt(doc_.get(), 0);
    for (const char *name : {"e1", "e2", "e3", "e4"}) {
        VlHtmlFormElement *element = VlHtmlFormElementNew();
        VlHtmlSetString(element->store, &element->name, name);
        SutAddList(form->elements, element);
    }
    EXPECT_EQ(ElementsOf(form), (Strings{"q/<null>", "<null>/x", "e1/<null>", "e2/<null>",
                                         "e3/<null>", "e4/<null>"}));
    for (int i = 0; i < 30; i++)
        SutAddList(doc_->anchors, VlHtmlAnchNew());
    EXPECT_EQ(SutSizList(doc_->anchors), 32);

    VlHtmlForm *second = static_cast<VlHtmlForm *>(SutRemoveNList(doc_->forms, 1));
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(Str(second->action), "b.cgi");
    VlHtmlFormDelete(second);
    EXPECT_EQ(FormsOf(doc_.get()), Strings{"<null>|a.cgi|get"});
    doc_.reset();
}

} // namespace
