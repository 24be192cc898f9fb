// The SQL of a work call as PostgreSQL takes it: every :name placeholder
// becomes a positional parameter $n, found only in the statement's own text,
// never inside a quoted string, a quoted identifier, a comment, a
// dollar-quoted string or a :: cast.
#ifndef VELMORA_RUNTIME_PLACEHOLDERS_HPP
#define VELMORA_RUNTIME_PLACEHOLDERS_HPP

#include <string>
#include <string_view>
#include <vector>

namespace vlrun {

struct PositionalSql {
    std::string sql;
    std::vector<std::string> names; // names[n - 1] is the placeholder of $n
};

// Rewrites sql: a placeholder is ':' followed by a letter or '_' and then
// letters, digits and '_'; each distinct name gets the next number, and a
// name used twice gets the same one. Skipped as they stand: '...' strings
// ('' inside; E'...' also with backslash escapes), "..." identifiers, --
// comments to the line's end, nested /* */ comments, $$...$$ and
// $tag$...$tag$ strings and :: casts. A quoted part left open runs to the
// end, where the database reports it. False with a reason when the SQL holds
// a positional parameter ($1) of its own, which no argument bind names.
bool RewritePlaceholders(std::string_view sql, PositionalSql &out, std::string &why);

} // namespace vlrun

#endif
