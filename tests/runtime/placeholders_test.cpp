// The rewriting of :name placeholders into PostgreSQL's $n: numbered in the
// order of first use, and never inside literals, identifiers, comments,
// dollar-quoted strings or casts.
#include "runtime/placeholders.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

// "<sql> [names]" of the rewritten SQL, or "refused: <why>".
std::string Rewrite(const std::string &sql) {
    vlrun::PositionalSql out;
    std::string why;
    if (!vlrun::RewritePlaceholders(sql, out, why)) return "refused: " + why;
    std::string names;
    for (const std::string &name : out.names)
        names += (names.empty() ? "" : ",") + name;
    return out.sql + " [" + names + "]";
}

TEST(Placeholders, NamesBecomeNumberedParametersInOrderOfFirstUse) {
    EXPECT_EQ(Rewrite("select * from t where a = :b and c = :a or d = :b"),
              "select * from t where a = $1 and c = $2 or d = $1 [b,a]");
    EXPECT_EQ(Rewrite(":x_1+:x2,:_y"), "$1+$2,$3 [x_1,x2,_y]");
    EXPECT_EQ(Rewrite("insert into t values (:quantity::int, :when::timestamptz)"),
              "insert into t values ($1::int, $2::timestamptz) [quantity,when]");
    EXPECT_EQ(Rewrite("select a::text, b :: int, :1, :, x:y"),
              "select a::text, b :: int, :1, :, x$1 [y]");
    EXPECT_EQ(Rewrite("select 1"), "select 1 []");
}

TEST(Placeholders, QuotedTextCommentsAndCastsAreLeftAlone) {
    const char *const untouched[] = {
        "select ':a', 'it''s :a', '' || :",
        "select \"odd:col\", \"with \"\":a\"\" inside\"",
        "select E'\\':a', e'\\\\'",
        "select U&':a', B'1', X':a'",
        "select 1 -- :a is a comment\n",
        "select /* :a /* nested :b */ still :c */ 1",
        "select $$:a$$, $body$ :a $$ :b $body$, $_x1$:c$_x1$",
        "select a$b, price$, f$1",
        "select 'open :a",
        "select 1 /* open :a",
        "select $q$ open :a",
        "-- :a",
    };
    for (const char *sql : untouched)
        EXPECT_EQ(Rewrite(sql), std::string(sql) + " []") << sql;
    // What follows a closed part is read again.
    EXPECT_EQ(Rewrite("select 'x', \"y\", E'\\'', $$z$$, /*c*/ :a -- :b\n, :c"),
              "select 'x', \"y\", E'\\'', $$z$$, /*c*/ $1 -- :b\n, $2 [a,c]");
    EXPECT_EQ(Rewrite("select 'a\\' , :b"), "select 'a\\' , $1 [b]"); // no escape in '...'
    EXPECT_EQ(Rewrite("select $1 + :a"), "refused: parameter $1 is not a :name placeholder");
    EXPECT_EQ(Rewrite("select :a + $23"), "refused: parameter $23 is not a :name placeholder");
}

} // namespace
