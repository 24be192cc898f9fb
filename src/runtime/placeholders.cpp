// Rewriting :name placeholders into PostgreSQL's $n in one pass over the
// SQL. The lexical rules are PostgreSQL's own (with standard conforming
// strings, which the runtime's connections switch on), so text that the
// server reads as a literal, an identifier or a comment is never touched.
#include "runtime/placeholders.hpp"

#include <unordered_map>

namespace vlrun {

namespace {

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// A character of an identifier or keyword after its first (PostgreSQL also
// takes '$' and every non-ASCII byte there).
bool IsWordChar(char c) {
    return IsLetter(c) || IsDigit(c) || c == '$' || static_cast<unsigned char>(c) >= 0x80;
}

// The end of a quoted part that starts at from (just after the opening
// quote): the position after the closing quote, or the text's end. A doubled
// quote stays inside; with backslashes, a backslash escapes the next byte.
std::size_t QuotedEnd(std::string_view sql, std::size_t from, char quote, bool backslashes) {
    for (std::size_t i = from; i < sql.size(); i++) {
        if (backslashes && sql[i] == '\\') {
            i++;
        } else if (sql[i] == quote) {
            if (i + 1 < sql.size() && sql[i + 1] == quote)
                i++;
            else
                return i + 1;
        }
    }
    return sql.size();
}

// The end of a /* comment starting at from (after its opening), nested
// comments included.
std::size_t CommentEnd(std::string_view sql, std::size_t from) {
    int depth = 1;
    for (std::size_t i = from; i + 1 < sql.size(); i++) {
        if (sql[i] == '/' && sql[i + 1] == '*') {
            depth++;
            i++;
        } else if (sql[i] == '*' && sql[i + 1] == '/') {
            i++;
            if (--depth == 0) return i + 1;
        }
    }
    return sql.size();
}

// The length of a dollar-quote tag ("$$", "$body$") starting at at, or 0.
std::size_t DollarTag(std::string_view sql, std::size_t at) {
    std::size_t i = at + 1;
    if (i < sql.size() && sql[i] != '$') {
        if (!IsLetter(sql[i]) && static_cast<unsigned char>(sql[i]) < 0x80) return 0;
        while (i < sql.size() && IsWordChar(sql[i]) && sql[i] != '$')
            i++;
    }
    return i < sql.size() && sql[i] == '$' ? i + 1 - at : 0;
}

} // namespace

bool RewritePlaceholders(std::string_view sql, PositionalSql &out, std::string &why) {
    out.sql.clear();
    out.names.clear();
    out.sql.reserve(sql.size() + 8);
    std::unordered_map<std::string_view, std::size_t> numbers;
    std::size_t i = 0;
    while (i < sql.size()) {
        const char c = sql[i];
        const char next = i + 1 < sql.size() ? sql[i + 1] : '\0';
        std::size_t end = i + 1; // what is copied as it stands: [i, end)
        if (IsLetter(c) || static_cast<unsigned char>(c) >= 0x80 || IsDigit(c)) {
            while (end < sql.size() && IsWordChar(sql[end]))
                end++;
            // E'...' (or e'...') is a string with backslash escapes.
            if (end == i + 1 && (c == 'E' || c == 'e') && next == '\'')
                end = QuotedEnd(sql, i + 2, '\'', true);
        } else if (c == '\'' || c == '"') {
            end = QuotedEnd(sql, i + 1, c, false);
        } else if (c == '-' && next == '-') {
            end = sql.find('\n', i);
            end = end == std::string_view::npos ? sql.size() : end + 1;
        } else if (c == '/' && next == '*') {
            end = CommentEnd(sql, i + 2);
        } else if (c == '$') {
            if (IsDigit(next)) {
                std::size_t digits = i + 1;
                while (digits < sql.size() && IsDigit(sql[digits]))
                    digits++;
                why = "parameter " + std::string(sql.substr(i, digits - i)) +
                      " is not a :name placeholder";
                return false;
            }
            if (std::size_t tag = DollarTag(sql, i)) {
                std::size_t close = sql.find(sql.substr(i, tag), i + tag);
                end = close == std::string_view::npos ? sql.size() : close + tag;
            }
        } else if (c == ':' && next == ':') {
            end = i + 2;
        } else if (c == ':' && IsLetter(next)) {
            end = i + 2;
            while (end < sql.size() && (IsLetter(sql[end]) || IsDigit(sql[end])))
                end++;
            std::string_view name = sql.substr(i + 1, end - i - 1);
            auto [it, added] = numbers.try_emplace(name, out.names.size() + 1);
            if (added) out.names.emplace_back(name);
            out.sql += '$';
            out.sql += std::to_string(it->second);
            i = end;
            continue;
        }
        out.sql.append(sql.substr(i, end - i));
        i = end;
    }
    return true;
}

} // namespace vlrun
