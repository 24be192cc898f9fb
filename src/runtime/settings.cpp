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

std::string &ProgramDirText() {
    static std::string dir = ".";
    return dir;
}

std::string Text(const char *s) {
    return s ? s : "";
}

// An HTML path may be written with a drive ("c:/www"): the part after the
// first colon is the directory, as the main module's generator takes it.
std::string WithoutDrive(std::string_view path) {
    std::size_t colon = path.find(':');
    return std::string(colon == std::string_view::npos ? path : path.substr(colon + 1));
}

void SetVendor(Settings &s, std::string_view word) {
    s.vendor = 0;
    s.vendorName = word;
    for (const VendorName &v : kVendors)
        if (word == v.word) s.vendor = v.vendor;
}

// One line of the configuration file, as "name" and "value".
void Apply(Settings &s, std::string_view name, const std::string &value) {
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
        s.htmlDir = WithoutDrive(value);
    else if (name == "GIF URL")
        s.gifUrl = value;
    else if (name == "Database Server")
        s.server = value;
    else if (name == "Database Name")
        s.database = value;
    else if (name == "Database Vendor")
        SetVendor(s, value);
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

Settings &TheSettings() {
    static Settings s;
    return s;
}

std::string_view VendorWord(int vendor) {
    for (const VendorName &v : kVendors)
        if (v.vendor == vendor) return v.word;
    return {};
}

void SetProgramDir(const char *argv0) {
    std::string path = argv0 && std::strchr(argv0, '/') ? argv0 : "";
    if (path.empty()) {
        char exe[PATH_MAX];
        ssize_t n = readlink("/proc/self/exe", exe, sizeof exe - 1);
        if (n > 0) path.assign(exe, static_cast<std::size_t>(n));
    }
    std::size_t slash = path.rfind('/');
    ProgramDirText() = slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

const std::string &ProgramDir() {
    return ProgramDirText();
}

std::string FromProgramDir(std::string_view path) {
    if (!path.empty() && path[0] == '/') return std::string(path);
    return ProgramDir() + "/" + std::string(path);
}

void ReadConfigFile(Settings &s) {
    if (!s.allowConfigFile || s.configFile.empty()) return;
    SutList *lines = VlOptionGetFromFile(FromProgramDir(s.configFile).c_str());
    for (int i = 0; i < SutSizList(lines); i++) {
        std::string_view line(static_cast<const char *>(SutGetNList(lines, i)));
        std::size_t sep = line.find(" : ");
        if (sep != std::string_view::npos)
            Apply(s, line.substr(0, sep), std::string(line.substr(sep + 3)));
    }
    SutDestroyList(lines);
}

} // namespace vlrun

using vlrun::TheSettings;

extern "C" {

void VlInitHeaders(void) {
    // Only the settings start afresh: the activators are registered before.
    TheSettings() = vlrun::Settings();
}

void VlRelocatableProject(int relocatable) {
    TheSettings().relocatable = relocatable != 0;
}

void VlSetDefaults(const char *server, const char *database) {
    TheSettings().server = vlrun::Text(server);
    TheSettings().database = vlrun::Text(database);
}

void VlSetStartupHtml(const char *page) {
    TheSettings().startupHtml = vlrun::Text(page);
}

void VlSetHtmlURL(const char *url) {
    TheSettings().htmlUrl = vlrun::Text(url);
}

void VlSetApiMaxNum(int count) {
    TheSettings().apiMaxNum = count;
}

void VlAllowShutDown(int allow) {
    TheSettings().allowShutDown = allow != 0;
}

void VlSetCacheNumConn(int count) {
    TheSettings().cacheNumConn = count;
}

void VlSetSessTimeOut(int seconds) {
    TheSettings().sessTimeOut = seconds;
}

void VlSetGifURL(const char *url) {
    TheSettings().gifUrl = vlrun::Text(url);
}

void VlSetDefaultVendor(int vendor) {
    TheSettings().vendor = vendor;
    std::string_view word = vlrun::VendorWord(vendor);
    TheSettings().vendorName = word.empty() ? "number " + std::to_string(vendor) : std::string(word);
}

void VlSetOrbHost(const char *host) {
    TheSettings().orbHost = vlrun::Text(host);
}

void VlSetOrbSeed(long seed) {
    TheSettings().orbSeed = seed;
}

void VlSetDefaultUser(const char *user) {
    TheSettings().user = vlrun::Text(user);
}

void VlSetDefaultPass(const char *password) {
    TheSettings().password = vlrun::Text(password);
}

void VlAllowSQL(int allow) {
    TheSettings().allowSql = allow != 0;
}

void VlAllowConfigFile(int allow) {
    TheSettings().allowConfigFile = allow != 0;
}

void VlSetConfigFile(const char *fileName) {
    TheSettings().configFile = vlrun::Text(fileName);
}

void VlSetHtmlDir(const char *directory) {
    TheSettings().htmlDir = vlrun::Text(directory);
}

void VlSetPrintArgs(int print) {
    TheSettings().printArgs = print != 0;
}

void VlSetPrintEnv(int print) {
    TheSettings().printEnv = print != 0;
}

void VlProcessLogin(int required) {
    TheSettings().loginRequired = required != 0;
}

void VlSetDoCommonLog(int log) {
    TheSettings().commonLog = log != 0;
}

void VlSetUseAppLogin(int use) {
    TheSettings().useAppLogin = use != 0;
}

void VlSetStateHost(const char *host) {
    TheSettings().stateHost = vlrun::Text(host);
}

} // extern "C"
