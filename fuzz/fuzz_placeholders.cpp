// Fuzz target: the rewriting of :name placeholders into PostgreSQL's $n,
// on SQL text from anywhere. Besides the sanitizers' checks it asserts what
// every rewrite must give: distinct names of the placeholder form, the text
// unchanged when it held none, and no more than one number per name.
#include "runtime/placeholders.hpp"

#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>

namespace {

bool isPlaceholderName(const std::string &name) {
    if (name.empty() || !(std::isalpha(static_cast<unsigned char>(name[0])) || name[0] == '_'))
        return false;
    for (char c : name)
        if (!(std::isalnum(static_cast<unsigned char>(c)) || c == '_')) return false;
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string sql(reinterpret_cast<const char *>(data), size);
    vlrun::PositionalSql out;
    std::string why;
    if (!vlrun::RewritePlaceholders(sql, out, why)) {
        if (why.rfind("parameter $", 0) != 0) std::abort();
        return 0;
    }
    std::set<std::string> seen;
    for (const std::string &name : out.names)
        if (!isPlaceholderName(name) || !seen.insert(name).second) std::abort();
    if (out.names.empty() && out.sql != sql) std::abort();
    if (out.sql.size() > sql.size() + 8 * out.names.size() + sql.size()) std::abort();
    return 0;
}
