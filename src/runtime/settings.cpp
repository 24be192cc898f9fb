// The setup calls of the generated main module, the configuration file that
// overrides them at run time, and the program directory that relative names
// (configuration file, HTML directory, databases) are taken from.
#include "runtime/settings.hpp"

#include "runtime/api.hpp"
#include "util/list.h"
#include "util/options.h"

#include <unistd.h>

#include <climits>
#include <cstring>

namespace vlrun {

namespace {

struct VendorName {
    int vendor;
    const char *word;
};
constexpr VendorName kVendors[] = {
    {SGESQLITE, "SQLITE"}, {SGEPOSTGRES, "POSTGRES"}, {SGEORACLE, "ORACLE"},
    {SGESYBASE, "SYBASE"}, {SGEINFORMIX, "INFORMIX"}, {SGEDB2, "DB2"},
    {SGEODBC, "ODBC"},     {SGEMSSQL, "MSSQL"},       {SGEMYSQL, "MYSQL"},
    {SGEINGRES, "INGRES"},
};

std::string &programDirText() {
    static std::string dir = ".";
    return dir;
}

std::string text(const char *s) {
    return s ? s : "";
}

// An HTML path may be written with a drive ("c:/www"): the part after the
// first colon is the directory, as the main module's generator takes it.
std::string withoutDrive(std::string_view path) {
    std::size_t colon = path.find(':');
    return std::string(colon == std::string_view::npos ? path : path.substr(colon + 1));
}

void setVendor(Settings &s, std::string_view word) {
    s.vendor = 0;
    s.vendorName = word;
    for (const VendorName &v : kVendors)
        if (word == v.word) s.vendor = v.vendor;
}

// One line of the configuration file, as "name" and "value".
void apply(Settings &s, std::string_view name, const std::string &value) {
    bool yes = value == "True";
    if (name == "Project.HTML Startup Document")
        s.startupHtml = value;
    else if (name == "Project.Allow SQL in HTML")
        s.allowSql = yes;
    else if (name == "Project.Print Form Args")
        s.printArgs = yes;
    else if (name == "Project.Print Environment")
        s.printEnv = yes;
    else if (name == "Project.Secure Login")
        s.loginRequired = yes;
    else if (name == "Project.Use Common Login")
        s.commonLog = yes;
    else if (name == "Project.Use Native OS Login")
        s.useAppLogin = yes;
    else if (name == "CGI URL")
        s.cgiUrl = value;
    else if (name == "HTML URL")
        s.htmlUrl = value;
    else if (name == "HTML Path")
        s.htmlDir = withoutDrive(value);
    else if (name == "GIF URL")
        s.gifUrl = value;
    else if (name == "Database Server")
        s.server = value;
    else if (name == "Database Name")
        s.database = value;
    else if (name == "Database Vendor")
        setVendor(s, value);
    else if (name == "Database User Name")
        s.user = value;
    else if (name == "STATE_HOST")
        s.stateHost = value;
    else if (name == "ORB_HOST")
        s.orbHost = value;
    else if (name == "ORB_SEED")
        s.orbSeed = std::strtol(value.c_str(), nullptr, 10);
}

} // namespace

Settings &settings() {
    static Settings s;
    return s;
}

std::string_view vendorWord(int vendor) {
    for (const VendorName &v : kVendors)
        if (v.vendor == vendor) return v.word;
    return {};
}

void setProgramDir(const char *argv0) {
    std::string path = argv0 && std::strchr(argv0, '/') ? argv0 : "";
    if (path.empty()) {
        char exe[PATH_MAX];
        ssize_t n = readlink("/proc/self/exe", exe, sizeof exe - 1);
        if (n > 0) path.assign(exe, static_cast<std::size_t>(n));
    }
    std::size_t slash = path.rfind('/');
    programDirText() = slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

const std::string &programDir() {
    return programDirText();
}

std::string fromProgramDir(std::string_view path) {
    if (!path.empty() && path[0] == '/') return std::string(path);
    return programDir() + "/" + std::string(path);
}

void readConfigFile(Settings &s) {
    if (!s.allowConfigFile || s.configFile.empty()) return;
    SutList *lines = VlOptionGetFromFile(fromProgramDir(s.configFile).c_str());
    for (int i = 0; i < SutSizList(lines); i++) {
        std::string_view line(static_cast<const char *>(SutGetNList(lines, i)));
        std::size_t sep = line.find(" : ");
        if (sep != std::string_view::npos)
            apply(s, line.substr(0, sep), std::string(line.substr(sep + 3)));
    }
    SutDestroyList(lines);
}

} // namespace vlrun

using vlrun::settings;

extern "C" {

void VlInitHeaders(void) {
    // Only the settings start afresh: the activators are registered before.
    settings() = vlrun::Settings();
}

void VlRelocatableProject(int relocatable) {
    settings().relocatable = relocatable != 0;
}

void VlSetDefaults(const char *server, const char *database) {
    settings().server = vlrun::text(server);
    settings().database = vlrun::text(database);
}

void VlSetStartupHtml(const char *page) {
    settings().startupHtml = vlrun::text(page);
}

void VlSetHtmlURL(const char *url) {
    settings().htmlUrl = vlrun::text(url);
}

void VlSetApiMaxNum(int count) {
    settings().apiMaxNum = count;
}

void VlAllowShutDown(int allow) {
    settings().allowShutDown = allow != 0;
}

void VlSetCacheNumConn(int count) {
    settings().cacheNumConn = count;
}

void VlSetSessTimeOut(int seconds) {
    settings().sessTimeOut = seconds;
}

void VlSetGifURL(const char *url) {
    settings().gifUrl = vlrun::text(url);
}

void VlSetDefaultVendor(int vendor) {
    settings().vendor = vendor;
    std::string_view word = vlrun::vendorWord(vendor);
    settings().vendorName = word.empty() ? "number " + std::to_string(vendor) : std::string(word);
}

void VlSetOrbHost(const char *host) {
    settings().orbHost = vlrun::text(host);
}

void VlSetOrbSeed(long seed) {
    settings().orbSeed = seed;
}

void VlSetDefaultUser(const char *user) {
    settings().user = vlrun::text(user);
}

void VlSetDefaultPass(const char *password) {
    settings().password = vlrun::text(password);
}

void VlAllowSQL(int allow) {
    settings().allowSql = allow != 0;
}

void VlAllowConfigFile(int allow) {
    settings().allowConfigFile = allow != 0;
}

void VlSetConfigFile(const char *fileName) {
    settings().configFile = vlrun::text(fileName);
}

void VlSetHtmlDir(const char *directory) {
    settings().htmlDir = vlrun::text(directory);
}

void VlSetPrintArgs(int print) {
    settings().printArgs = print != 0;
}

void VlSetPrintEnv(int print) {
    settings().printEnv = print != 0;
}

void VlProcessLogin(int required) {
    settings().loginRequired = required != 0;
}

void VlSetDoCommonLog(int log) {
    settings().commonLog = log != 0;
}

void VlSetUseAppLogin(int use) {
    settings().useAppLogin = use != 0;
}

void VlSetStateHost(const char *host) {
    settings().stateHost = vlrun::text(host);
}

} // extern "C"
