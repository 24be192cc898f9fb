// Identifier strings, activator letters, menu entries, category names, string
// list helpers and the resource list lookups.
#include "support/c_values.hpp"
#include "util/ident.h"

#include <gtest/gtest.h>

namespace {

TEST(Ident, FormAndAnchorIdentifiers) {
    EXPECT_EQ(take(WbMakeFormIdString("p.html", "f1", 0)), "p.html<FORM>f1");
    EXPECT_EQ(take(WbMakeFormIdString("p.html", "a1", 1)), "p.html<A>a1");
    EXPECT_EQ(WbMakeFormIdString(nullptr, "f", 0), nullptr);

    char *page = nullptr, *name = nullptr;
    int type = 9;
    EXPECT_EQ(WbGetFormIdStringParts("p.html<FORM>f1", &page, &name, &type), 1);
    EXPECT_EQ(take(page), "p.html");
    EXPECT_EQ(take(name), "f1");
    EXPECT_EQ(type, 0);
    // "<A>" is searched first, wherever it stands.
    EXPECT_EQ(WbGetFormIdStringParts("x<FORM>y<A>z", &page, &name, &type), 1);
    EXPECT_EQ(take(page), "x<FORM>y");
    EXPECT_EQ(take(name), "z");
    EXPECT_EQ(type, 1);
    EXPECT_EQ(WbGetFormIdStringParts("<A>z", &page, &name, &type), 1);
    EXPECT_EQ(take(page), "");
    EXPECT_EQ(take(name), "z");

    EXPECT_EQ(WbGetFormIdStringParts("p.html<A>", &page, &name, &type), 0);
    EXPECT_EQ(page, nullptr);
    EXPECT_EQ(name, nullptr);
    EXPECT_EQ(type, 1); // stays set
    EXPECT_EQ(WbGetFormIdStringParts("p.html", &page, &name, &type), 0);
    EXPECT_EQ(type, -1);
    type = 5;
    EXPECT_EQ(WbGetFormIdStringParts("", &page, &name, &type), 0);
    EXPECT_EQ(type, -1);
    EXPECT_EQ(page, nullptr);
}

TEST(Ident, BindDisplayStringAndActivatorLetters) {
    EXPECT_EQ(take(WbMakeBindIdString("page<FORM>f", "db", "owner", "proc", 3)),
              "page<FORM>f --> db|owner|proc (Hello)");
    EXPECT_EQ(take(WbMakeBindIdString("a", nullptr, "owner", "proc", 3)), "a --> proc (Hello)");
    EXPECT_EQ(take(WbMakeBindIdString("a", "db", nullptr, "proc", 3)), "a --> proc (Hello)");
    EXPECT_EQ(WbMakeBindIdString(nullptr, "b", "c", "d", 0), nullptr);

    EXPECT_EQ(take(WbMakeActivatorType(1)), "A");
    EXPECT_EQ(take(WbMakeActivatorType(7)), "F");
    EXPECT_EQ(WbGetActivatorType("anchor"), 1);
    EXPECT_EQ(WbGetActivatorType("F"), 0);
    EXPECT_EQ(WbGetActivatorType(nullptr), 0);
}

TEST(Ident, RecentProjectMenuEntries) {
    EXPECT_EQ(take(WbFormatMRUItem("3. /x/y.vlm", 0)), "1. /x/y.vlm");
    EXPECT_EQ(take(WbFormatMRUItem("/x", 98)), "99. /x");
    EXPECT_EQ(WbFormatMRUItem("/x", 99), nullptr);
    EXPECT_EQ(take(WbFormatMRUItem("/a. b/c. d", 1)), "2. b/c. d"); // first ". " only
    EXPECT_EQ(WbFormatMRUItem(nullptr, 1), nullptr);
}

TEST(Ident, CategoryOptionNames) {
    EXPECT_EQ(take(WbMakeCatOption("Project", "Name", "v")), "Project.Name : v");
    EXPECT_EQ(take(WbMakeCatOption("App Server", "Host", nullptr)), "App Server.Host : ");
    EXPECT_EQ(WbMakeCatOption(nullptr, "n", "v"), nullptr);

    char *out = nullptr;
    EXPECT_EQ(WbGetCatOnly("Test.Port.x", &out), 1);
    EXPECT_EQ(take(out), "Test");
    out = strdup("stale");
    char *stale = out;
    EXPECT_EQ(WbGetCatOnly(".x", &out), 0);
    EXPECT_EQ(out, nullptr);
    free(stale);
    EXPECT_EQ(WbGetCatOnly("nodot", &out), 0);
    EXPECT_EQ(WbGetCatOnly(nullptr, &out), 0);
    EXPECT_EQ(out, nullptr);

    EXPECT_EQ(WbGetOptOnly(".x", &out), 1);
    EXPECT_EQ(take(out), "x");
    EXPECT_EQ(WbGetOptOnly("Test.Port.x", &out), 1);
    EXPECT_EQ(take(out), "Port.x");
    EXPECT_EQ(WbGetOptOnly("nodot", &out), 0);
    EXPECT_EQ(out, nullptr);

    EXPECT_EQ(take(WbStripCat("Release.Dir")), "Dir");
    EXPECT_EQ(take(WbStripCat("x.")), "");
    EXPECT_EQ(WbStripCat("nodot"), nullptr);
    EXPECT_EQ(WbStrToDelim("^i"), 9);
}

TEST(Ident, StringListSortAndCopy) {
    SutList *l = makeList({"b", nullptr, "a", "B"});
    EXPECT_EQ(WbSutListSort(l), 1);
    EXPECT_EQ(items(l), (Strings{"<null>", "B", "a", "b"}));
    SutList *copy = WbSutListStrDup(l);
    EXPECT_EQ(items(copy), items(l));
    EXPECT_NE(SutGetNList(copy, 1), SutGetNList(l, 1));
    EXPECT_EQ(SutGetNList(copy, 0), nullptr);
    SutDestroyList(copy);
    SutDestroyList(l);
    SutList *empty = SutNewList();
    EXPECT_EQ(WbSutListSort(empty), 0);
    EXPECT_EQ(takeList(WbSutListStrDup(empty)), Strings{});
    SutDeleteList(empty);
    EXPECT_EQ(WbSutListStrDup(nullptr), nullptr);

    const char *x = "x";
    const char *none = nullptr;
    EXPECT_EQ(WbSortStringProc(&none, &none), 0);
    EXPECT_LT(WbSortStringProc(&none, &x), 0);
    EXPECT_GT(WbSortStringProc(&x, &none), 0);
}

TEST(Ident, SingleLineResourceLookup) {
    SutList *l = makeList({"# Name: no", "  Name:  first", "Name: second"});
    char *v = WbGetResourceValueFromList(l, "Name");
    EXPECT_STREQ(v, "first");
    EXPECT_EQ(v, static_cast<char *>(SutGetNList(l, 1)) + 9); // points into the line
    SutDestroyList(l);

    // An indented "#" is no comment; a prefix finds longer names; a candidate
    // without a colon is passed over; an empty value ends the search.
    l = makeList({nullptr, "Host", " #Host: hashed", "HostName: x"});
    EXPECT_STREQ(WbGetResourceValueFromList(l, "#Host"), "hashed");
    EXPECT_STREQ(WbGetResourceValueFromList(l, "Host"), "x");
    SutDestroyList(l);
    l = makeList({"Name:  \t", "Name: later"});
    EXPECT_EQ(WbGetResourceValueFromList(l, "Name"), nullptr);
    EXPECT_EQ(WbGetResourceValueFromList(l, "Other"), nullptr);
    EXPECT_EQ(WbGetResourceValueFromList(nullptr, "Name"), nullptr);
    SutDestroyList(l);
}

TEST(Ident, MultiLineResourceLookupChangesTheList) {
    SutList *l = makeList({"Name: a \\", "b \\", "c", "Name2: z"});
    EXPECT_EQ(take(WbGetMultiResourceValueFromList(l, "Name")), "a \nb \nc");
    EXPECT_EQ(items(l), (Strings{"Name: a ", "b ", "c", "Name2: z"}));
    EXPECT_EQ(take(WbGetMultiResourceValueFromList(l, "Name")), "a ");
    SutDestroyList(l);

    // Empty lines are not counted, but the further lines are taken by position.
    l = makeList({"X: 1\\  ", "", "2\\", "3", "4"});
    EXPECT_EQ(take(WbGetMultiResourceValueFromList(l, "X")), "1\n\n2");
    SutDestroyList(l);

    l = makeList({"# Y: no", "Y", "Y:", "Y: tail"});
    EXPECT_EQ(take(WbGetMultiResourceValueFromList(l, "Y")), ""); // first candidate has no ":"
    EXPECT_EQ(take(WbGetMultiResourceValueFromList(l, "Q")), "");
    EXPECT_EQ(take(WbGetMultiResourceValueFromList(nullptr, "Y")), "");
    SutDestroyList(l);
}

} // namespace
