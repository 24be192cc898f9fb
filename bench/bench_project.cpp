// Throughput of a whole project run in the engine: reading a generated
// project of many pages and modules, merging a configuration file into its
// options, and writing everything back (backup, project file, modules, pages,
// main module, makefile, configuration file).
#include "velmora.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace fs = std::filesystem;

namespace {

// A project directory with n pages, each with a named form and an anchor, and
// one module per page whose form function holds some user code.
struct LargeProject {
    fs::path old = fs::current_path();
    std::string dir;

    explicit LargeProject(int n) {
        std::string pattern = (fs::temp_directory_path() / "vlbenchXXXXXX").string();
        dir = mkdtemp(pattern.data());
        fs::create_directories(dir + "/dist/config");
        std::ofstream(dir + "/dist/config/Velmora.cfg")
            << "Makefile.$VL_SOURCE_SUFFIX : .c\nMakefile.exeSuffix : .cgi\n"
               "Project.Call Read/Write Scripts : False\nTest.CGI URL : /cgi-bin\n"
               "Project.Allow Config File : True\nProject.Config File Name : big.cfg\n";
        std::ofstream(dir + "/dist/config/main.tem")
            << "/* Velmora Start Of User Includes */\n/* Velmora End Of User Includes */\n"
               "/* Velmora Start Of Callback Declarations */\n"
               "/* Velmora End Of Callback Declarations */\nint main()\n{\n"
               "\t/* Velmora Start Of Initial Code */\n\t/* Velmora End Of Initial Code */\n"
               "\t/* Velmora Start Of Callback Registration */\n"
               "\t/* Velmora End Of Callback Registration */\n"
               "\t/* Velmora Start Of Final Code */\n\t/* Velmora End Of Final Code */\n}\n";
        std::ofstream(dir + "/dist/config/Makefile.tem")
            << "P = $VL_EXECUTABLE\nM = \\\n$VL_MODULES";
        setenv("VELMORA", (dir + "/dist").c_str(), 1);
        setenv("HOME", dir.c_str(), 1);
        // Each project has its own distribution: forget the previous one's.
        VlResetDistDir();
        VlProjResetOptionFiles();
        std::ofstream(dir + "/big.c") << "";

        std::ofstream pj(dir + "/big.pj");
        pj << "Velmora Project File V1.0\nThis is a generated file. DO NOT MODIFY.\nSource "
              "files:\n";
        for (int i = 0; i < n; i++)
            pj << "p" << i << ".c\n";
        pj << "HTML Files :\n";
        for (int i = 0; i < n; i++)
            pj << "p" << i << ".html\n";
        pj << "Project Options :\nTest.HTML URL : /old\n";
        std::string code;
        for (int line = 0; line < 40; line++)
            code += "\tcount = count + " + std::to_string(line) + ";\n";
        for (int i = 0; i < n; i++) {
            const std::string page = "p" + std::to_string(i) + "_html";
            std::ofstream(dir + "/p" + std::to_string(i) + ".html")
                << "<html><body>\n<FORM ACTION=\"/cgi-bin/big.cgi\" METHOD=\"post\" >\n"
                   "<INPUT TYPE=\"hidden\" NAME=\"VlFormName\" VALUE=\"f__F"
                << page
                << "\">\n<INPUT TYPE=\"text\" NAME=\"x\">\n</FORM>\n"
                   "<A HREF=\"/cgi-bin/big.cgi?FNC=a__A"
                << page << "\" >go</A>\n</body></html>\n";
            std::ofstream(dir + "/p" + std::to_string(i) + ".c")
                << "/* Velmora Module File V1.0B */\n/* Velmora Start Of user Includes */\n"
                   "static char _Vl_HTML_Filename[] = \"p"
                << i
                << ".html\";\n/*Velmora Start of Function */\nstatic void Ff ()\n"
                   "/* start of initial code */\n{\n\tint count = 0;\n"
                   "/* start of func Code */\n/* end of func code */\n/* start of final code */\n"
                << code << "}/* end of final code */\n";
        }
        std::ofstream(dir + "/site.cfg") << "Test.HTML URL : /new\nTest.CGI Path : /cgi\n";
    }
    ~LargeProject() {
        VlProjDelete();
        fs::current_path(old);
        std::error_code ec;
        fs::remove_all(dir, ec);
    }
};

// What the driver does between its start-up checks and the install.
void BM_ReadMergeWrite(benchmark::State &state) {
    const int n = static_cast<int>(state.range(0));
    LargeProject project(n);
    const std::string path = project.dir + "/big.pj";
    SutList *config = VlOptionGetFromFile((project.dir + "/site.cfg").c_str());
    for (auto _ : state) {
        VlProjNew(path.c_str(), 0);
        SutList *options = VlProjGetOptions();
        for (int i = 0; i < SutSizList(config); i++)
            options =
                VlAppendOption(options, VlCopyString(static_cast<char *>(SutGetNList(config, i))));
        VlProjSetName(path.c_str());
        benchmark::DoNotOptimize(VlProjWrite(1));
    }
    SutDestroyList(config);
    state.SetItemsProcessed(state.iterations() * n);
    state.SetLabel("pages and modules");
}
BENCHMARK(BM_ReadMergeWrite)->Arg(10)->Arg(100)->Arg(400)->Unit(benchmark::kMillisecond);

// Writing alone, the main module and makefile included.
void BM_Write(benchmark::State &state) {
    const int n = static_cast<int>(state.range(0));
    LargeProject project(n);
    VlProjNew((project.dir + "/big.pj").c_str(), 0);
    for (auto _ : state)
        benchmark::DoNotOptimize(VlProjWrite(1));
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_Write)->Arg(100)->Arg(400)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
