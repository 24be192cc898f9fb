// Filling an answer page: every site mark ##Vl_<site>## becomes the results
// bound to that site (an HTML table, or a bare value), $$VL_CGI_URL the
// program's URL, and a BASE element lets the page's relative links reach the
// HTML URL. Every value from the database or the request is HTML-escaped.
#ifndef VELMORA_RUNTIME_PAGE_FILL_HPP
#define VELMORA_RUNTIME_PAGE_FILL_HPP

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct SgeWorkCallData;

namespace vlrun {

// Replaces each site mark (a name without blanks, quotes or backslashes
// between "##Vl_" and "##") by site(name), and each "$$VL_CGI_URL" by the
// escaped cgiUrl. When baseUrl is not empty and the page has no BASE
// element, one with baseUrl (and a closing '/') follows the HEAD tag.
std::string FillPage(std::string_view page, const std::function<std::string(std::string_view)> &site,
                     std::string_view cgiUrl, std::string_view baseUrl);

// A table of class "vl-<site>": a header row, then one row per result row.
std::string SiteTable(std::string_view site, const std::vector<std::string> &headers,
                      const std::vector<std::vector<std::string>> &rows);

// The HTML of the site of the page: for each work call with column binds for
// (page, site) (a bind without a page counts for any page), in call order,
// the columns sorted by their order; a single column of a call limited to
// one row gives its bare value. Empty when nothing is bound there.
std::string SiteHtml(const std::vector<std::unique_ptr<SgeWorkCallData>> &calls,
                     std::string_view page, std::string_view site);

// Inserts html before the page's last </body> (any case), else at its end.
std::string BeforeBodyEnd(std::string_view page, std::string_view html);

// A table of class "vl-<what>" of name/value pairs, escaped.
std::string PairTable(std::string_view what,
                      const std::vector<std::pair<std::string, std::string>> &pairs);

} // namespace vlrun

#endif
