// The input parser of the runtime: urlencoded text into fields, and every
// refusal with its status and sentence.
#include "runtime/cgi_input.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using vlrun::Field;
using vlrun::ParseUrlEncoded;

// The fields as "name=value;" pieces, or "<status>: <message>".
std::string Parsed(const std::string &text) {
    std::vector<Field> fields;
    vlrun::Fault fault = ParseUrlEncoded(text, fields);
    if (fault.status) return std::to_string(fault.status) + ": " + fault.message;
    std::string out;
    for (const Field &f : fields)
        out += f.name + "=" + f.value + ";";
    return out;
}

TEST(CgiInput, DecodesFieldsInTheirOrder) {
    EXPECT_EQ(Parsed("a=1&b=x+y%21&c=%E2%82%AC"), "a=1;b=x y!;c=\xE2\x82\xAC;");
    // Empty pieces are skipped; a field without '=' has the empty value; '='
    // inside a value and an empty name are kept as they are.
    EXPECT_EQ(Parsed("&&a&b==1&=v&"), "a=;b==1;=v;");
    EXPECT_EQ(Parsed("t=%27+OR+1%3D1--&u=%3Cscript%3E"), "t=' OR 1=1--;u=<script>;");
    EXPECT_EQ(Parsed("x=%41%4a%4A"), "x=AJJ;");
    EXPECT_EQ(Parsed(""), "");
}

TEST(CgiInput, RefusesBadEscapesNulBytesAndNonUtf8) {
    for (const char *bad : {"a=%", "a=%4", "a=%zz", "a=%4g", "%=1", "a=1&b=%%41"})
        EXPECT_EQ(Parsed(bad), "400: The request holds a bad %-escape.") << bad;
    EXPECT_EQ(Parsed("a=x%00y"), "400: The request holds a NUL byte.");
    // A lone continuation byte, an overlong slash, a surrogate, a code point
    // beyond U+10FFFF, a cut-off sequence.
    for (const char *bad : {"a=%80", "a=%C0%AF", "a=%ED%A0%80", "a=%F4%90%80%80", "a=%E2%82"})
        EXPECT_EQ(Parsed(bad), "400: The request holds text that is not UTF-8.") << bad;
    EXPECT_EQ(Parsed("a=%F0%9F%98%80%C3%A9"), "a=\xF0\x9F\x98\x80\xC3\xA9;");
}

TEST(CgiInput, AcceptsAtMost1025FieldsInAll) {
    std::string text;
    for (int i = 0; i < 1025; i++)
        text += "f=1&";
    std::vector<Field> fields;
    EXPECT_EQ(ParseUrlEncoded(text, fields).status, 0);
    EXPECT_EQ(fields.size(), 1025u);
    // The limit counts the body's and the query's fields together.
    vlrun::Fault fault = ParseUrlEncoded("g=2", fields);
    EXPECT_EQ(fault.status, 413);
    EXPECT_EQ(fault.message, "The request holds more than 1025 fields.");
}

} // namespace
