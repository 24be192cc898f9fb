// Speed of the application runtime on the example shop's search:
// - CgiSearchVsProcessFloor: the program built from the example exactly as
//   its generated makefile builds it (cc, -lvlrun from the staged
//   distribution) run as a CGI process, fork+exec per request as a web server
//   does, interleaved with as many runs of /bin/true (the cost of any
//   process); counters give both rates and their ratio.
// - LibpqLinkedVsProcessFloor: the same program linked with libpq as well
//   (as if the runtime linked it instead of opening it on demand), which
//   makes it load libpq and the libraries libpq needs at every start.
// - InProcessSearch: the same request answered inside this process (input,
//   dispatch, SQLite query, page fill, output to /dev/null): the runtime's
//   own cost per request.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

extern "C" int VlShopMain(int argc, char **argv);

namespace fs = std::filesystem;

namespace {

const char kQuery[] = "QUERY_STRING=VlFormName=search__Fcatalog_html&title=Mo";

// cgi-bin/shop.cgi (built with the distribution's makefile command lines),
// its database and configuration file, and the pages in www/shop.
struct ShopSite {
    std::string dir;
    std::string program;
    bool ready = false;
    bool libpqLinked = false; // cgi-bin/shop-libpq.cgi was built

    ShopSite() {
        std::string pattern = (fs::temp_directory_path() / "vlbenchXXXXXX").string();
        dir = mkdtemp(pattern.data());
        const std::string example = std::string(VELMORA_SOURCE_DIR) + "/examples/shop";
        const std::string stage = VELMORA_STAGE_DIR;
        fs::create_directories(dir + "/cgi-bin");
        fs::create_directories(dir + "/www/shop");
        fs::create_directories(dir + "/build");
        for (const char *page : {"catalog.html", "order.html"})
            fs::copy_file(example + "/" + page, dir + "/www/shop/" + page);
        fs::copy_file(example + "/shop.cfg", dir + "/cgi-bin/shop.cfg");
        const std::string cc = VELMORA_C_COMPILER;
        std::string build = "cd " + dir + "/build && for f in shop catalog order; do " + cc +
                            " -I" + stage + "/include -O2 -c -o $f.o " + example +
                            "/$f.c || exit 1; done && " + cc + " -L" + stage +
                            "/lib -o ../cgi-bin/shop.cgi shop.o catalog.o order.o -lvlrun && " +
                            stage + "/bin/vlsql ../cgi-bin/shop.db " + example + "/shop.sql";
        ready = std::system(build.c_str()) == 0;
        program = dir + "/cgi-bin/shop.cgi";
        std::string linked = "cd " + dir + "/build && " + cc + " -L" + stage +
                             "/lib -o ../cgi-bin/shop-libpq.cgi shop.o catalog.o order.o -lvlrun "
                             "-Wl,--no-as-needed -lpq";
        libpqLinked = ready && std::system(linked.c_str()) == 0;
    }
    ~ShopSite() {
        std::error_code ec;
        fs::remove_all(dir, ec);
    }
};

ShopSite &Site() {
    static ShopSite s;
    return s;
}

// Runs the program with the environment, output to /dev/null; seconds taken.
double Spawn(const std::string &program, std::vector<std::string> env) {
    std::vector<char *> envp;
    for (std::string &e : env)
        envp.push_back(e.data());
    envp.push_back(nullptr);
    std::string argv0 = program;
    char *argv[] = {argv0.data(), nullptr};
    auto start = std::chrono::steady_clock::now();
    pid_t pid = fork();
    if (pid == 0) {
        int null = open("/dev/null", O_RDWR);
        dup2(null, 0);
        dup2(null, 1);
        dup2(null, 2);
        execve(argv[0], argv, envp.data());
        _exit(127);
    }
    int status = 0;
    waitpid(pid, &status, 0);
    std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    return taken.count();
}

// Runs program and /bin/true alternately, as CGI processes.
void VersusProcessFloor(benchmark::State &state, const std::string &program) {
    const std::vector<std::string> env = {"REQUEST_METHOD=GET", kQuery,
                                          "SCRIPT_NAME=/cgi-bin/shop.cgi", "PATH=/usr/bin:/bin"};
    double cgi = 0, floor = 0;
    for (auto _ : state) {
        cgi += Spawn(program, env);
        floor += Spawn("/bin/true", env);
    }
    double n = static_cast<double>(state.iterations());
    state.counters["cgi_per_s"] = n / cgi;
    state.counters["true_per_s"] = n / floor;
    state.counters["ratio"] = cgi / floor;
}

void CgiSearchVsProcessFloor(benchmark::State &state) {
    if (!Site().ready) return state.SkipWithError("building shop.cgi failed");
    VersusProcessFloor(state, Site().program);
}
BENCHMARK(CgiSearchVsProcessFloor)->Unit(benchmark::kMillisecond)->MinTime(3);

void LibpqLinkedVsProcessFloor(benchmark::State &state) {
    if (!Site().libpqLinked) return state.SkipWithError("linking shop-libpq.cgi failed");
    VersusProcessFloor(state, Site().dir + "/cgi-bin/shop-libpq.cgi");
}
BENCHMARK(LibpqLinkedVsProcessFloor)->Unit(benchmark::kMillisecond)->MinTime(3);

void InProcessSearch(benchmark::State &state) {
    if (!Site().ready) return state.SkipWithError("building shop.cgi failed");
    setenv("REQUEST_METHOD", "GET", 1);
    setenv("QUERY_STRING", kQuery + 13, 1);
    setenv("SCRIPT_NAME", "/cgi-bin/shop.cgi", 1);
    std::string argv0 = Site().program;
    char *argv[] = {argv0.data(), nullptr};
    std::fflush(stdout);
    int savedOut = dup(1), savedErr = dup(2), null = open("/dev/null", O_WRONLY);
    dup2(null, 1);
    dup2(null, 2);
    for (auto _ : state)
        benchmark::DoNotOptimize(VlShopMain(1, argv));
    std::fflush(stdout);
    std::fflush(stderr);
    dup2(savedOut, 1);
    dup2(savedErr, 2);
    close(null);
    close(savedOut);
    close(savedErr);
}
BENCHMARK(InProcessSearch)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
