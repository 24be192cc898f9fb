// Throughput of module files and of the page refresh: reading a large module
// back into its record (with plain user code, and with the generated binding
// code that the reader hands to the binding-code parser), writing it out
// again, and carrying a page with many forms over to a new reading.
#include "velmora.h"

#include "generated_code.hpp"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace fs = std::filesystem;

namespace {

// A project page with n named forms and, on disk, its module with one
// function per form, each holding about 2 KB of user code, or (with
// bindingCode) two generated requests of about 1.6 KB each.
struct LargeModule {
    fs::path old = fs::current_path();
    std::string dir;
    VlHtmlDoc *page = nullptr;
    size_t bytes = 0;

    explicit LargeModule(int n, bool bindingCode = false) {
        std::string pattern = (fs::temp_directory_path() / "vlbenchXXXXXX").string();
        dir = mkdtemp(pattern.data());
        fs::current_path(dir);
        setenv("VELMORA", dir.c_str(), 1);
        fs::create_directories(dir + "/config");
        std::ofstream(dir + "/config/Velmora.cfg")
            << "Makefile.$VL_SOURCE_SUFFIX : .c\nProject.Call Read/Write Scripts : False\n";
        VlProjNewEmpty();
        page = VlHtmlNew();
        VlHtmlSetName(page, "big.html");
        page->forms = SutNewList();
        std::string text = "/* Velmora Module File V1.0B */\n"
                           "/* Velmora Start Of user Includes */\n#include <stdio.h>\n"
                           "static char _Vl_HTML_Filename[] = \"big.html\";\n";
        const std::string code(2000, 'x');
        for (int i = 0; i < n; i++) {
            VlHtmlForm *form = VlHtmlFormNew();
            SutAddList(page->forms, form);
            const std::string name = "f" + std::to_string(i);
            VlHtmlFormSetName(page, form, name.c_str());
            const std::string funcCode = bindingCode
                                             ? bench::GeneratedRequest("big.html", name, 1) + "\n" +
                                                   bench::GeneratedRequest("big.html", name, 2)
                                             : "\tcall();";
            text += "/*Velmora Start of Function */\nstatic void F" + name +
                    " ()\n/* start of initial code */\n{\n" + (bindingCode ? "\tint n;" : code) +
                    "\n/* start of func Code */\n" + funcCode +
                    "\n/* end of func code */\n"
                    "/* start of final code */\n}/* end of final code */\n";
        }
        text += "void R_big_html()\n{\n\n}/* Velmora End of Module */\n";
        SutAddList(theProj->htmlDocs, page);
        std::ofstream("big.c", std::ios::binary) << text;
        bytes = text.size();
    }
    ~LargeModule() {
        VlProjDelete();
        fs::current_path(old);
        fs::remove_all(dir);
    }
};

void BM_ModuleRead(benchmark::State &state) {
    LargeModule setup(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        VlModule *module = VlModuleNewFromFile("big.c");
        benchmark::DoNotOptimize(module);
        VlModuleDelete(module);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * setup.bytes));
}
BENCHMARK(BM_ModuleRead)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

// A module whose n form functions each carry two generated requests, as the
// modules of a real project do: the reader's time is mostly the binding-code
// parser's. The binds each reading adds to the map are dropped between
// readings, untimed, so the map does not grow.
void BM_ModuleReadBindingCode(benchmark::State &state) {
    LargeModule setup(static_cast<int>(state.range(0)), true);
    for (auto _ : state) {
        VlModule *module = VlModuleNewFromFile("big.c");
        benchmark::DoNotOptimize(module);
        state.PauseTiming();
        VlModuleDelete(module);
        SwdResetTheMap();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * setup.bytes));
}
BENCHMARK(BM_ModuleReadBindingCode)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void BM_ModuleWrite(benchmark::State &state) {
    LargeModule setup(static_cast<int>(state.range(0)));
    VlModule *module = VlModuleNewFromFile("big.c");
    for (auto _ : state)
        benchmark::DoNotOptimize(VlModuleWrite(module, "out.c", 1));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * setup.bytes));
    VlModuleDelete(module);
}
BENCHMARK(BM_ModuleWrite)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

// A hostile module: n function markers without any code markers. Each
// function's section searches find nothing; the time must grow linearly in n.
void BM_ModuleReadBareFunctions(benchmark::State &state) {
    LargeModule setup(1);
    const int n = static_cast<int>(state.range(0));
    std::string text = "/* Velmora Module File V1.0B */\n"
                       "static char _Vl_HTML_Filename[] = \"big.html\";\n";
    for (int i = 0; i < n; i++)
        text += "/*Velmora Start of Function */\nstatic void Ff0 ()\n";
    std::ofstream("bare.c", std::ios::binary) << text;
    for (auto _ : state) {
        VlModule *module = VlModuleNewFromFile("bare.c");
        benchmark::DoNotOptimize(module);
        VlModuleDelete(module);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
    state.SetComplexityN(n);
}
BENCHMARK(BM_ModuleReadBareFunctions)
    ->RangeMultiplier(4)
    ->Range(1024, 65536)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

// A page of n named forms refreshed against a new reading in which half the
// forms keep their names and half are found again by their original action.
void BM_HtmlRefresh(benchmark::State &state) {
    const int n = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        VlHtmlDoc *oldDoc = VlHtmlNew();
        VlHtmlDoc *newDoc = VlHtmlNew();
        VlHtmlSetName(oldDoc, "p.html");
        VlHtmlSetName(newDoc, "p.html");
        oldDoc->forms = SutNewList();
        newDoc->forms = SutNewList();
        for (int i = 0; i < n; i++) {
            const std::string name = "f" + std::to_string(i);
            VlHtmlForm *oldForm = VlHtmlFormNew();
            SutAddList(oldDoc->forms, oldForm);
            VlHtmlFormSetName(oldDoc, oldForm, name.c_str());
            oldForm->origAction = strdup(("/a/" + name).c_str());
            VlHtmlForm *newForm = VlHtmlFormNew();
            SutAddList(newDoc->forms, newForm);
            if (i % 2)
                VlHtmlFormSetName(newDoc, newForm, name.c_str());
            else
                newForm->origAction = strdup(("/a/" + name).c_str());
        }
        state.ResumeTiming();
        VlHtmlRefresh(oldDoc, newDoc);
        state.PauseTiming();
        VlHtmlDelete(oldDoc);
        VlHtmlDelete(newDoc);
        state.ResumeTiming();
    }
    state.SetComplexityN(n);
}
BENCHMARK(BM_HtmlRefresh)->RangeMultiplier(4)->Range(256, 16384)->Complexity();

} // namespace

BENCHMARK_MAIN();
