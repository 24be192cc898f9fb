// Identifier strings, activator letters and the resource list lookups.
#include "support/c_values.hpp"
#include "util/ident.h"

#include <gtest/gtest.h>

namespace {

TEST(Ident, FormAndAnchorIdentifiers) {
    EXPECT_EQ(Take(WbMakeFormIdString("p.html", "f1", 0)), "p.html<FORM>f1");
    EXPECT_EQ(Take(WbMakeFormIdString("p.html", "a1", 1)), "p.html<A>a1");
    char *page = nullptr, *name = nullptr;
    int type = 9;
    // "<A>" is searched first, wherever it stands.
    EXPECT_EQ(WbGetFormIdStringParts("x<FORM>y<A>z", &page, &name, &type), 1);
    EXPECT_EQ(Take(page), "x<FORM>y");
    EXPECT_EQ(Take(name), "z");
    EXPECT_EQ(type, 1);
    EXPECT_EQ(WbGetFormIdStringParts("p.html<FORM>", &page, &name, &type), 0);
    EXPECT_EQ(page, nullptr);
    EXPECT_EQ(type, 0); // stays set
    EXPECT_EQ(WbGetFormIdStringParts("p.html", &page, &name, &type), 0);
    EXPECT_EQ(type, -1);
}

TEST(Ident, BindDisplayStringAndActivatorLetters) {
    EXPECT_EQ(Take(WbMakeBindIdString("page<FORM>f", "db", "owner", "proc", 3)),
              "page<FORM>f --> db|owner|proc (Hello)");
    EXPECT_EQ(Take(WbMakeBindIdString("a", "db", nullptr, "proc", 3)), "a --> proc (Hello)");
    EXPECT_EQ(Take(WbMakeActivatorType(7)), "F");
    EXPECT_EQ(WbGetActivatorType("anchor"), 1);
}

TEST(Ident, ResourceLookups) {
    // A "#" first is a comment, an indented one is not; a prefix finds
    // longer names; a candidate without a colon is passed over; the value
    // points into the line.
    SutList *l = MakeList({"# Name: no", "Name", " #Name: hashed", "NameX:  first", "Name: 2"});
    char *v = WbGetResourceValueFromList(l, "Name");
    EXPECT_STREQ(v, "first");
    EXPECT_EQ(v, static_cast<char *>(SutGetNList(l, 3)) + 8);
    EXPECT_STREQ(WbGetResourceValueFromList(l, "#Name"), "hashed");
    SutDestroyList(l);
    l = MakeList({"Name:  \t", "Name: later"}); // an empty value ends the search
    EXPECT_EQ(WbGetResourceValueFromList(l, "Name"), nullptr);
    SutDestroyList(l);

    // Continued values: the backslashes are cut in the list's own lines, and
    // further lines are taken by position, so an empty line takes a place.
    l = MakeList({"Name: a \\", "b \\", "c", "Name2: z"});
    EXPECT_EQ(Take(WbGetMultiResourceValueFromList(l, "Name")), "a \nb \nc");
    EXPECT_EQ(Items(l), (Strings{"Name: a ", "b ", "c", "Name2: z"}));
    SutDestroyList(l);
    l = MakeList({"X: 1\\  ", "", "2\\", "3", "4"});
    EXPECT_EQ(Take(WbGetMultiResourceValueFromList(l, "X")), "1\n\n2");
    EXPECT_EQ(Take(WbGetMultiResourceValueFromList(l, "Q")), "");
    SutDestroyList(l);
}

} // namespace
