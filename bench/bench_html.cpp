// Throughput of the page scanner and of the design-time markup (anchor,
// keyword and form passes chained as the save runs them) on a realistic page
// and on hostile pages built to make a careless scanner quadratic. Every case
// reports bytes per second; a hostile page should cost about what a realistic
// page costs per byte.
#include "velmora.h"

#include "html/markup_text.hpp"
#include "html/textscan.hpp"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

constexpr size_t kMegabyte = 1 << 20;

std::string Repeat(const std::string &piece, size_t size) {
    std::string s = " ";
    while (s.size() < size)
        s += piece;
    return s;
}

// About 200 KB of ordinary page: text, site marks, forms with elements, anchors
// inside and outside forms, and images whose SRC is a keyword attribute.
std::string RealisticPage() {
    std::string page = "<HTML><HEAD><TITLE>Shop</TITLE></HEAD>\n<BODY>\n";
    for (int i = 0; page.size() < 200 * 1024; i++) {
        std::string n = std::to_string(i);
        page += "<H2>Section " + n + "</H2>\n##Vl_site" + n + "##\n";
        page += "<P>Our catalogue lists everything you need. Prices include tax; "
                "delivery takes two to five days.</P>\n";
        page += "<IMG SRC=\"img/p" + n + ".gif\" ALT=\"product " + n + "\">\n";
        page += "<FORM ACTION=\"/cgi-bin/shop" + n +
                "\" METHOD=\"get\">\n"
                "<INPUT TYPE=\"text\" NAME=\"qty" +
                n +
                "\" VALUE=\"1\">\n"
                "<SELECT NAME=\"size\"><OPTION>S<OPTION>M<OPTION>L</SELECT>\n"
                "<TEXTAREA NAME=\"note\" ROWS=3>none</TEXTAREA>\n"
                "<A HREF=\"help.html\">help</A>\n"
                "<INPUT TYPE=submit VALUE=\"Order\">\n</FORM>\n";
        page += "<A HREF=\"detail" + n + ".html\">details</A> | <A HREF=\"/cgi-bin/x?FNC=a" + n +
                "__Ashop_html\">buy</A>\n";
    }
    return page + "</BODY></HTML>\n";
}

// Twenty thousand anchors in about one megabyte.
std::string ManyAnchors() {
    std::string page = " ";
    for (int i = 0; i < 20000; i++) {
        std::string n = std::to_string(i);
        page += "<A HREF=\"page" + n + ".html\">link " + n + "</A> ";
        page += std::string(52 - n.size() * 2, 'x') + "\n";
    }
    return page;
}

const std::string &Page(int which) {
    static const std::string pages[] = {
        RealisticPage(),
        Repeat("<FORM", kMegabyte),
        Repeat("<A ", kMegabyte),
        Repeat("##Vl_", kMegabyte),
        ManyAnchors(),
        std::string(kMegabyte, 'x'),
        " <FORM>" + Repeat("<INPUT TYPE=TYPE=", kMegabyte) + "</FORM>",
        Repeat(" SRC=\"", kMegabyte),
        Repeat(" HREF=\"x\"", kMegabyte),
    };
    return pages[which];
}

const char *const kNames[] = {"realistic 200 KB page",
                              "1 MB of <FORM without /FORM>",
                              "1 MB of <A without /A>",
                              "1 MB of ##Vl_ without closing mark",
                              "1 MB with 20,000 anchors",
                              "1 MB without <",
                              "1 MB of <INPUT TYPE= in one form",
                              "1 MB of open SRC=\" values",
                              "1 MB of HREF keyword attributes"};

// The keyword file of a distribution: SRC, and HREF so that every HREF outside
// an anchor asks whether it stands inside one.
void LoadKeywords() {
    static bool done = false;
    if (done) return;
    done = true;
    char dir[] = "/tmp/vlbenchXXXXXX";
    if (!mkdtemp(dir)) return;
    std::filesystem::create_directories(std::string(dir) + "/config");
    std::ofstream(std::string(dir) + "/config/VlKeyWds.ini") << "SRC\nHREF\n";
    setenv("VELMORA", dir, 1);
    VlReadKeyWords();
    std::filesystem::remove_all(dir);
}

void BM_Scan(benchmark::State &state) {
    LoadKeywords();
    const std::string &page = Page(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        VlHtmlDoc *doc = VlReadHtmlDesignTime(page.c_str());
        benchmark::DoNotOptimize(doc);
        VlHtmlDelete(doc);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * page.size()));
    state.SetLabel(kNames[state.range(0)]);
}

// The realistic page read with the sixteen-byte block tests (0) and, where
// the processor has them, the thirty-two-byte ones (1).
void BM_ScanBlocks(benchmark::State &state) {
    LoadKeywords();
    const std::string &page = Page(0);
    for (auto _ : state) {
        VlHtmlDoc *doc = vlscan::ReadDesignTime(page.c_str(), state.range(0) != 0);
        benchmark::DoNotOptimize(doc);
        VlHtmlDelete(doc);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * page.size()));
}

// The three passes as a save runs them, every form and anchor named.
void BM_Markup(benchmark::State &state) {
    LoadKeywords();
    const std::string &page = Page(static_cast<int>(state.range(0)));
    VlHtmlDoc *doc = VlReadHtmlDesignTime(page.c_str());
    VlHtmlSetName(doc, "shop.html");
    VlHtmlGenFormNames(doc);
    VlHtmlGenAnchNames(doc);
    std::string marked, spare; // kept from page to page, as the save keeps them
    for (auto _ : state) {
        marked.assign(page);
        vlmarkup::RunPass(doc, marked, spare, 1);
        vlmarkup::RunPass(doc, marked, spare, 2);
        vlmarkup::RunPass(doc, marked, spare, 0);
        benchmark::DoNotOptimize(marked.data());
    }
    VlHtmlDelete(doc);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * page.size()));
    state.SetLabel(kNames[state.range(0)]);
}

BENCHMARK(BM_Scan)->DenseRange(0, 8)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ScanBlocks)->DenseRange(0, 1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Markup)->DenseRange(0, 8)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
