// Hostile inputs at two sizes, the second ten times the first, so that a cost
// that is not linear in the input shows as a time ratio far above 10: a huge
// page, a page of forms that never close, a module of very many functions, a
// project of very many pages, a map file with a very long line, a
// configuration of very many lines merged into as many project options. (Map
// files of 1,000 and 10,000 binds are timed in bench_maps.) Each case runs a
// fixed number of iterations and compares the two sizes' times in its label.
#include "velmora.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

namespace fs = std::filesystem;

namespace {

// A scratch directory that is the working directory while it lives, with a
// distribution whose options switch the read and write scripts off.
struct Scratch {
    fs::path old = fs::current_path();
    std::string dir;
    Scratch() {
        std::string pattern = (fs::temp_directory_path() / "vlhostileXXXXXX").string();
        dir = mkdtemp(pattern.data());
        fs::create_directories(dir + "/config");
        std::ofstream(dir + "/config/Velmora.cfg")
            << "Makefile.$VL_SOURCE_SUFFIX : .c\nProject.Call Read/Write Scripts : False\n";
        setenv("VELMORA", dir.c_str(), 1);
        setenv("HOME", dir.c_str(), 1);
        VlResetDistDir();
        VlProjResetOptionFiles();
        fs::current_path(dir);
        // A current project that says no to the scripts, so that reading a
        // project runs none.
        VlProjNewEmpty();
        VlProjSetOptions(
            VlAppendOption(nullptr, strdup("Project.Call Read/Write Scripts : False")));
    }
    ~Scratch() {
        VlProjDelete();
        fs::current_path(old);
        std::error_code ec;
        fs::remove_all(dir, ec);
    }
    void Write(const std::string &name, const std::string &text) const {
        std::ofstream(dir + "/" + name, std::ios::binary) << text;
    }
};

// Seconds per iteration of each size, to report the ratio of the larger.
std::map<std::string, std::map<int64_t, double>> timings;

void Report(benchmark::State &state, const std::string &name, int64_t size, double seconds) {
    auto &sizes = timings[name];
    sizes[size] = seconds / static_cast<double>(state.iterations());
    if (sizes.size() == 2) {
        const double small = sizes.begin()->second, large = sizes.rbegin()->second;
        char label[64];
        std::snprintf(label, sizeof label, "x10 input: x%.1f time", large / small);
        state.SetLabel(label);
    }
}

template <class F> void Timed(benchmark::State &state, const std::string &name, F body) {
    double seconds = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        body();
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
    Report(state, name, state.range(0), seconds);
}

// A page of ordinary markup (forms, anchors, keyword attributes, site marks)
// of the given size in MB, read from its file (with its working copy written)
// and saved with its markup.
void BM_HugePage(benchmark::State &state) {
    Scratch scratch;
    const std::string block =
        "<p>Some text <b>here</b> and <IMG SRC=\"images/a.gif\"> there.</p>\n"
        "<FORM ACTION=\"/cgi-bin/x.cgi\" METHOD=\"post\">\n<INPUT TYPE=\"text\" NAME=\"q\">\n"
        "</FORM>\n##Vl_site1##\n<A HREF=\"other.html\">other</A>\n";
    std::string page = "<html><body>\n";
    const size_t size = static_cast<size_t>(state.range(0)) << 20;
    while (page.size() < size)
        page += block;
    scratch.Write("big.html", page);
    Timed(state, "page", [] {
        VlHtmlDoc *doc = VlHtmlNewFromFile("big.html");
        benchmark::DoNotOptimize(VlHtmlSave(doc));
        VlHtmlDelete(doc);
    });
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * page.size()));
}
BENCHMARK(BM_HugePage)->Arg(10)->Arg(100)->Iterations(1)->Unit(benchmark::kMillisecond);

// "<FORM" over and over and never "/FORM>", in KB: every form runs to the
// end of the page. Read and saved.
void BM_UnclosedForms(benchmark::State &state) {
    Scratch scratch;
    std::string page = "x";
    const size_t size = static_cast<size_t>(state.range(0)) << 10;
    while (page.size() < size)
        page += "<FORM";
    scratch.Write("open.html", page);
    Timed(state, "unclosed", [] {
        VlHtmlDoc *doc = VlHtmlNewFromFile("open.html");
        benchmark::DoNotOptimize(VlHtmlSave(doc));
        VlHtmlDelete(doc);
    });
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * page.size()));
}
BENCHMARK(BM_UnclosedForms)->Arg(100)->Arg(1000)->Iterations(3)->Unit(benchmark::kMillisecond);

// A module of n form functions whose page has the n forms.
void BM_ManyFunctions(benchmark::State &state) {
    Scratch scratch;
    const int n = static_cast<int>(state.range(0));
    VlHtmlDoc *page = VlHtmlNew();
    VlHtmlSetName(page, "big.html");
    page->forms = SutNewList();
    std::string text = "/* Velmora Module File V1.0B */\n/* Velmora Start Of user Includes */\n"
                       "static char _Vl_HTML_Filename[] = \"big.html\";\n";
    for (int i = 0; i < n; i++) {
        VlHtmlForm *form = VlHtmlFormNew();
        SutAddList(page->forms, form);
        const std::string name = "f" + std::to_string(i);
        VlHtmlFormSetName(page, form, name.c_str());
        text += "/*Velmora Start of Function */\nstatic void F" + name +
                " ()\n/* start of initial code */\n{\n/* start of func Code */\n"
                "/* end of func code */\n/* start of final code */\n}/* end of final code */\n";
    }
    text += "void R_big_html()\n{\n\n}/* Velmora End of Module */\n";
    SutAddList(theProj->htmlDocs, page);
    scratch.Write("big.c", text);
    Timed(state, "functions", [] {
        VlModule *module = VlModuleNewFromFile("big.c");
        benchmark::DoNotOptimize(module);
        VlModuleDelete(module);
    });
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_ManyFunctions)->Arg(10000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

// A project of n small pages, each with a form and its module.
void BM_ManyPages(benchmark::State &state) {
    Scratch scratch;
    const int n = static_cast<int>(state.range(0));
    std::string project = "Velmora Project File V1.0\nThis is a generated file. DO NOT MODIFY.\n"
                          "Source files:\n";
    for (int i = 0; i < n; i++)
        project += "p" + std::to_string(i) + ".c\n";
    project += "HTML Files :\n";
    for (int i = 0; i < n; i++)
        project += "p" + std::to_string(i) + ".html\n";
    project += "Project Options :\nProject.Call Read/Write Scripts : False\n";
    scratch.Write("many.pj", project);
    for (int i = 0; i < n; i++) {
        const std::string p = "p" + std::to_string(i);
        scratch.Write(p + ".html", "<html>\n<FORM ACTION=\"/x\" METHOD=\"post\">\n<INPUT "
                                   "TYPE=\"hidden\" NAME=\"VlFormName\" VALUE=\"f__F" +
                                       p + "_html\">\n</FORM>\n");
        scratch.Write(p + ".c",
                      "/* Velmora Module File V1.0B */\nstatic char _Vl_HTML_Filename[] = \"" + p +
                          ".html\";\n/*Velmora Start of Function */\nstatic void Ff ()\n"
                          "/* start of initial code */\n{\n/* start of func Code */\n"
                          "/* end of func code */\n/* start of final code */\n"
                          "}/* end of final code */\n");
    }
    const std::string path = scratch.dir + "/many.pj";
    Timed(state, "pages", [&] {
        benchmark::DoNotOptimize(VlProjNew(path.c_str(), 0));
        // The next reading must not run the read script either.
        VlProjSetOptions(
            VlAppendOption(nullptr, strdup("Project.Call Read/Write Scripts : False")));
    });
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_ManyPages)->Arg(1000)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);

// A map file whose one fragment is a line of the given size.
void BM_MapLongLine(benchmark::State &state) {
    Scratch scratch;
    const size_t size = static_cast<size_t>(state.range(0)) << 10;
    SpmMap *map = SpmNewMap();
    map->spBinds = SutNewList();
    SpmSPBind *bind = SpmCreateListsForSpmBind(1, 1, 1);
    bind->name = strdup("orders");
    bind->altName = strdup("bind1");
    bind->sqlFrags = SutNewList();
    SutAddList(bind->sqlFrags, strdup(std::string(size, 'x').c_str()));
    bind->beenApplied = 1;
    SutAddList(map->spBinds, bind);
    SpmAddIface(map, "Page1");
    auto *call = static_cast<SpmCallbackBind *>(SutGetNList(bind->callBinds, 0));
    call->interface = strdup("Page1");
    call->swidget = strdup("Form1");
    call->callbackName = strdup("F");
    SpmWriteMapFile(map, "long.map");
    SpmDestroyMap(&map);
    Timed(state, "mapline", [] {
        SpmMap *back = nullptr;
        benchmark::DoNotOptimize(SpmReadMapFile(&back, "long.map"));
        SpmDestroyMap(&back);
    });
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * size));
}
BENCHMARK(BM_MapLongLine)->Arg(100)->Arg(1000)->Iterations(3)->Unit(benchmark::kMillisecond);

// A configuration of n lines merged into a project of n options, as the
// driver does: every other line replaces a project option in place, the
// others are new and go at the end.
void BM_ConfigurationLines(benchmark::State &state) {
    const int n = static_cast<int>(state.range(0));
    std::string project, configuration;
    for (int i = 0; i < n; i++) {
        project += "Project.Option " + std::to_string(i) + " : old\n";
        configuration += "Project.Option " + std::to_string(i * 2) + " : new\n";
    }
    SutList *lines = VlOptionGetFromString(configuration.c_str());
    Timed(state, "configuration", [&] {
        SutList *options = VlOptionGetFromString(project.c_str());
        benchmark::DoNotOptimize(VlMergeOptionLines(options, lines));
        SutDestroyList(options);
    });
    SutDestroyList(lines);
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_ConfigurationLines)
    ->Arg(8000)
    ->Arg(80000)
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
