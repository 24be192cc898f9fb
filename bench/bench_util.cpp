// Throughput of the foundation's text functions on large inputs: the field
// splitter over a 10 MB text and the template filler over a 1 MB template
// holding 10,000 markers. Both must stay linear in their input.
#include "util/files.h"
#include "util/list.h"
#include "util/options.h"
#include "util/strings.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

// About 10 MB of lines with quoted fields, doubled quotes and empty fields.
std::string CsvText() {
    std::string line = "alpha,\"beta, with comma\",,\"say \"\"hi\"\"\",12345,last field\n";
    std::string text;
    text.reserve(10 * 1024 * 1024 + line.size());
    while (text.size() < 10 * 1024 * 1024)
        text += line;
    return text;
}

void BM_ParseFileStringLines(benchmark::State &state) {
    std::string text = CsvText();
    for (auto _ : state) {
        SutList *lines = VlParseFileString(text.c_str(), "\n", nullptr);
        benchmark::DoNotOptimize(lines);
        SutDestroyList(lines);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * text.size());
}
BENCHMARK(BM_ParseFileStringLines)->Unit(benchmark::kMillisecond);

void BM_ParseFileStringQuotedFields(benchmark::State &state) {
    std::string text = CsvText();
    for (auto _ : state) {
        SutList *fields = VlParseFileString(text.c_str(), ",", "\"");
        benchmark::DoNotOptimize(fields);
        SutDestroyList(fields);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * text.size());
}
BENCHMARK(BM_ParseFileStringQuotedFields)->Unit(benchmark::kMillisecond);

// A 1 MB template with 10,000 markers spread evenly over twenty keys.
void BM_StrSubsList(benchmark::State &state) {
    SutList *keys = SutNewList();
    SutList *values = SutNewList();
    for (int k = 0; k < 20; k++) {
        SutAddList(keys, strdup(("$VL_KEY" + std::to_string(k) + "_").c_str()));
        SutAddList(values, strdup(("value number " + std::to_string(k)).c_str()));
    }
    std::string text;
    const size_t filler = 1024 * 1024 / 10000;
    for (int i = 0; i < 10000; i++) {
        text.append(filler - 10, 'x');
        text += "$VL_KEY" + std::to_string(i % 20) + "_";
    }
    for (auto _ : state) {
        char *out = VlStrSubsList(text.c_str(), keys, values, "$VL_");
        benchmark::DoNotOptimize(out);
        std::free(out);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * text.size());
    SutDestroyList(keys);
    SutDestroyList(values);
}
BENCHMARK(BM_StrSubsList)->Unit(benchmark::kMillisecond);

// A 10 MB text in Unix line ends, made DOS.
void BM_UnixToDos(benchmark::State &state) {
    std::string text = CsvText();
    for (auto _ : state) {
        char *out = VlUnixToDos(text.c_str());
        benchmark::DoNotOptimize(out);
        std::free(out);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * text.size());
}
BENCHMARK(BM_UnixToDos)->Unit(benchmark::kMillisecond);

// Substitution where every other character is an occurrence.
void BM_StrSubsDense(benchmark::State &state) {
    std::string text;
    for (int i = 0; i < 1024 * 1024; i++)
        text += "a.";
    for (auto _ : state) {
        char *out = VlStrSubs(text.c_str(), "a", "bbb");
        benchmark::DoNotOptimize(out);
        std::free(out);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * text.size());
}
BENCHMARK(BM_StrSubsDense)->Unit(benchmark::kMillisecond);

// Reading an option text of 200,000 lines, every other one without a colon
// (dropped), and looking up its last option.
void BM_OptionsFromStringAndLookup(benchmark::State &state) {
    std::string text;
    for (int i = 0; i < 100000; i++)
        text += "Project.Option" + std::to_string(i) + " : value\n";
    for (auto _ : state) {
        SutList *options = VlOptionGetFromString(text.c_str());
        char *v = VlGetOptionValue(options, "Project.Option99999");
        benchmark::DoNotOptimize(v);
        std::free(v);
        SutDestroyList(options);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * text.size());
}
BENCHMARK(BM_OptionsFromStringAndLookup)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
