// Throughput of the binding maps: parsing activator bodies that hold many
// requests (bytes per second), writing and reading map files (binds per
// second) and naming a new bind in a large map. Sizes grow tenfold so that a
// linear cost shows as a steady rate.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <unistd.h>

#include "bindcode/generator.h"
#include "maps/map.h"
#include "maps/mapfile.h"
#include "bindcode/parser.h"
#include "bindcode/upkeep.h"

namespace {

void Set(char **field, const std::string &value) {
    free(*field);
    *field = strdup(value.c_str());
}

// A typical request: three columns, one callback, two arguments, fragments
// and options, user code around it.
SpmSPBind *SampleBind(int n) {
    SpmSPBind *b = SpmCreateListsForSpmBind(3, 1, 2);
    Set(&b->servername, "server");
    Set(&b->dbname, "sales");
    Set(&b->name, "orders_" + std::to_string(n));
    Set(&b->altName, "bind" + std::to_string(n));
    b->beenApplied = 1;
    b->id = 1;
    b->sqlFrags = SutNewList();
    SutAddList(b->sqlFrags, strdup("select id, name, \"qty\"\nfrom orders"));
    SutAddList(b->sqlFrags, strdup("where customer = ?"));
    b->options = SutNewList();
    SutAddList(b->options, strdup("Project.Timeout : 30"));
    for (int i = 0; i < 3; i++) {
        auto *col = static_cast<SpmColBind *>(SutGetNList(b->colBinds, i));
        Set(&col->swidget, "Entry" + std::to_string(i));
        Set(&col->interface, "Page1");
        Set(&col->columnName, "column" + std::to_string(i));
        Set(&col->dataType, "varchar");
        col->columnId = i;
        col->dataSize = 40;
        col->dataTypeId = 12;
    }
    auto *call = static_cast<SpmCallbackBind *>(SutGetNList(b->callBinds, 0));
    Set(&call->callbackName, "F");
    Set(&call->swidget, "Form1");
    Set(&call->interface, "Page1");
    Set(&call->initCode, "\tint count = 0;\n\tcheckSession();");
    Set(&call->finalCode, "\tshowResult(count);");
    for (int i = 0; i < 2; i++) {
        auto *arg = static_cast<SpmArgBind *>(SutGetNList(b->argBinds, i));
        arg->argId = i + 1;
        Set(&arg->argName, "p" + std::to_string(i));
        Set(&arg->dataType, "int");
        Set(&arg->initCode, "VlGetInputValue(\"p" + std::to_string(i) + "\")");
    }
    return b;
}

std::string BodyOf(int requests) {
    std::string body = "{\n\t/**  velmora versn 1.00  **/\n\tXtPointer VlClient=NULL;\n";
    for (int i = 0; i < requests; i++) {
        SpmSPBind *b = SampleBind(i);
        char *code =
            getCallbackCode(b, static_cast<SpmCallbackBind *>(SutGetNList(b->callBinds, 0)), 1);
        body += (i ? "\n" : "") + std::string(code);
        free(code);
        SpmDestroySPBind(&b);
    }
    return body + "\n}";
}

void BM_ParseBody(benchmark::State &state) {
    std::string body = BodyOf(static_cast<int>(state.range(0)));
    SwdCallbackCode item = {const_cast<char *>("F"), const_cast<char *>(body.c_str())};
    SutList *items = SutNewList();
    SutAddList(items, &item);
    SwdResetTheMap();
    for (auto _ : state) {
        SutList *binds = SwdExtractMapsFromCallbacks("Page1", "Form1", items);
        benchmark::DoNotOptimize(binds);
        for (int i = 0; i < SutSizList(binds); i++) {
            auto *b = static_cast<SpmSPBind *>(SutGetNList(binds, i));
            SpmDestroySPBind(&b);
        }
        SutDeleteList(binds);
    }
    SutDeleteList(items);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * body.size());
}
BENCHMARK(BM_ParseBody)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

SpmMap *MapOf(int binds) {
    SpmMap *map = SpmNewMap();
    map->spBinds = SutNewList();
    SpmAddIface(map, "Page1");
    for (int i = 0; i < binds; i++)
        SutAddList(map->spBinds, SampleBind(i));
    return map;
}

std::string TempMapPath() {
    return "/tmp/bench_maps_" + std::to_string(getpid()) + ".map";
}

void BM_WriteMapFile(benchmark::State &state) {
    SpmMap *map = MapOf(static_cast<int>(state.range(0)));
    std::string path = TempMapPath();
    for (auto _ : state)
        benchmark::DoNotOptimize(SpmWriteMapFile(map, path.c_str()));
    state.SetItemsProcessed(state.iterations() * state.range(0));
    SpmDestroyMap(&map);
    unlink(path.c_str());
}
BENCHMARK(BM_WriteMapFile)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_ReadMapFile(benchmark::State &state) {
    SpmMap *map = MapOf(static_cast<int>(state.range(0)));
    std::string path = TempMapPath();
    SpmWriteMapFile(map, path.c_str());
    SpmDestroyMap(&map);
    for (auto _ : state) {
        SpmMap *back = nullptr;
        benchmark::DoNotOptimize(SpmReadMapFile(&back, path.c_str()));
        SpmDestroyMap(&back);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    unlink(path.c_str());
}
BENCHMARK(BM_ReadMapFile)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// Every name bind1 .. bindN is taken: the free one is found after N tries.
void BM_UniqueName(benchmark::State &state) {
    SwdResetTheMap();
    for (int i = 1; i <= state.range(0); i++)
        Set(&SpmAddSPBind()->altName, "bind" + std::to_string(i));
    for (auto _ : state) {
        char *name = WbeGetUniqueSPName("bind1");
        benchmark::DoNotOptimize(name);
        free(name);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    SwdResetTheMap();
}
BENCHMARK(BM_UniqueName)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
