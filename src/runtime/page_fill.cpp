// The page filler: site marks replaced by the escaped results of the column
// binds, the program URL placeholder resolved, a BASE element for relative
// links; one pass over the page.
#include "runtime/page_fill.hpp"

#include "runtime/answer.hpp"
#include "runtime/workcall.hpp"

#include <algorithm>
#include <cctype>

namespace vlrun {

namespace {

bool ValidSiteChar(char c) {
    return !std::isspace(static_cast<unsigned char>(c)) && c != '"' && c != '\\';
}

// Position of needle in text from pos on, ignoring ASCII case.
std::size_t FindNoCase(std::string_view text, std::string_view needle, std::size_t pos = 0) {
    const auto *it = std::search(text.begin() + static_cast<std::ptrdiff_t>(std::min(pos, text.size())),
                          text.end(), needle.begin(), needle.end(), [](char a, char b) {
                              return std::tolower(static_cast<unsigned char>(a)) ==
                                     std::tolower(static_cast<unsigned char>(b));
                          });
    return it == text.end() ? std::string_view::npos : static_cast<std::size_t>(it - text.begin());
}

bool SameNoCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && FindNoCase(a, b) == 0;
}

std::string WithBase(std::string_view page, std::string_view baseUrl) {
    if (baseUrl.empty() || FindNoCase(page, "<base") != std::string_view::npos)
        return std::string(page);
    std::size_t head = FindNoCase(page, "<head");
    while (head != std::string_view::npos && head + 5 < page.size() && page[head + 5] != '>' &&
           !std::isspace(static_cast<unsigned char>(page[head + 5])))
        head = FindNoCase(page, "<head", head + 5); // <header> is not the head
    std::size_t end = head == std::string_view::npos ? head : page.find('>', head);
    if (end == std::string_view::npos) return std::string(page);
    std::string url(baseUrl);
    if (url.back() != '/') url += '/';
    return std::string(page.substr(0, end + 1)) + "<base href=\"" + HtmlEscape(url) + "\">" +
           std::string(page.substr(end + 1));
}

// The result column a column bind shows: by name, else by its position.
int ResultColumn(const SgeWorkCallData &call, const ColumnBind &bind) {
    for (std::size_t c = 0; c < call.resultNames.size(); c++)
        if (!bind.columnName.empty() && SameNoCase(call.resultNames[c], bind.columnName))
            return static_cast<int>(c);
    return bind.position >= 1 && bind.position <= call.columnCount ? bind.position - 1 : -1;
}

} // namespace

std::string FillPage(std::string_view page, const std::function<std::string(std::string_view)> &site,
                     std::string_view cgiUrl, std::string_view baseUrl) {
    static constexpr std::string_view kMark = "##Vl_";
    static constexpr std::string_view kCgiUrl = "$$VL_CGI_URL";
    std::string out;
    out.reserve(page.size());
    std::size_t pos = 0;
    std::size_t mark = page.find(kMark);
    std::size_t url = page.find(kCgiUrl);
    while (pos < page.size()) {
        // Each search resumes only once the walk has passed its last find, so
        // the page is scanned once for each of the two texts.
        if (mark != std::string_view::npos && mark < pos) mark = page.find(kMark, pos);
        if (url != std::string_view::npos && url < pos) url = page.find(kCgiUrl, pos);
        std::size_t next = std::min(mark, url);
        out.append(page.substr(pos, next - pos));
        if (next == std::string_view::npos) break;
        if (next == url) {
            AppendEscaped(out, cgiUrl);
            pos = url + kCgiUrl.size();
            continue;
        }
        std::size_t nameStart = mark + kMark.size();
        std::size_t nameEnd = nameStart;
        while (nameEnd < page.size() && page[nameEnd] != '#' && ValidSiteChar(page[nameEnd]))
            nameEnd++;
        if (nameEnd > nameStart && page.substr(nameEnd, 2) == "##") {
            out += site(page.substr(nameStart, nameEnd - nameStart));
            pos = nameEnd + 2;
        } else {
            out.append(kMark); // not a site mark: kept as it stands
            pos = nameStart;
        }
    }
    return WithBase(out, baseUrl);
}

std::string SiteTable(std::string_view site, const std::vector<std::string> &headers,
                      const std::vector<std::vector<std::string>> &rows) {
    std::string out = "<table class=\"vl-" + HtmlEscape(site) + "\">\n<tr>";
    for (const std::string &header : headers) {
        out += "<th>";
        AppendEscaped(out, header);
        out += "</th>";
    }
    out += "</tr>\n";
    for (const auto &row : rows) {
        out += "<tr>";
        for (const std::string &value : row) {
            out += "<td>";
            AppendEscaped(out, value);
            out += "</td>";
        }
        out += "</tr>\n";
    }
    return out + "</table>\n";
}

std::string SiteHtml(const std::vector<std::unique_ptr<SgeWorkCallData>> &calls,
                     std::string_view page, std::string_view site) {
    std::string out;
    for (const auto &call : calls) {
        if (!call->ran) continue;
        std::vector<const ColumnBind *> binds;
        for (const ColumnBind &bind : call->columns)
            if (bind.site == site && (bind.page.empty() || bind.page == page)) binds.push_back(&bind);
        if (binds.empty()) continue;
        std::stable_sort(binds.begin(), binds.end(),
                         [](const ColumnBind *a, const ColumnBind *b) { return a->order < b->order; });
        std::vector<int> columns;
        std::vector<std::string> headers;
        for (const ColumnBind *bind : binds) {
            int c = ResultColumn(*call, *bind);
            columns.push_back(c);
            headers.push_back(!bind->columnName.empty() || c < 0 ? bind->columnName
                                                                 : call->resultNames[c]);
        }
        std::vector<std::vector<std::string>> rows;
        for (int r = 0; r < call->rows; r++) {
            std::vector<std::string> &row = rows.emplace_back();
            for (int c : columns) {
                const char *value = ResultValue(*call, r, c);
                row.emplace_back(value ? value : "");
            }
        }
        if (binds.size() == 1 && call->maxRows == 1)
            out += rows.empty() ? std::string() : HtmlEscape(rows[0][0]);
        else
            out += SiteTable(site, headers, rows);
    }
    return out;
}

std::string BeforeBodyEnd(std::string_view page, std::string_view html) {
    std::size_t end = std::string_view::npos;
    for (std::size_t at = FindNoCase(page, "</body"); at != std::string_view::npos;
         at = FindNoCase(page, "</body", at + 1))
        end = at;
    if (end == std::string_view::npos) return std::string(page) + std::string(html);
    return std::string(page.substr(0, end)) + std::string(html) + std::string(page.substr(end));
}

std::string PairTable(std::string_view what,
                      const std::vector<std::pair<std::string, std::string>> &pairs) {
    std::vector<std::vector<std::string>> rows;
    rows.reserve(pairs.size());
    for (const auto &[name, value] : pairs)
        rows.push_back({name, value});
    return SiteTable(what, {"name", "value"}, rows);
}

} // namespace vlrun
