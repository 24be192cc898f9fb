// The settings of a generated program: defaults, then the setup calls of its
// main module, then (strongest) the configuration file the engine writes for
// it, read at the start of every request when the program allows it. Also
// the program's own directory, against which relative names resolve.
#ifndef VELMORA_RUNTIME_SETTINGS_HPP
#define VELMORA_RUNTIME_SETTINGS_HPP

#include <string>
#include <string_view>

namespace vlrun {

struct Settings {
    bool relocatable = false;
    std::string server;   // with database: overrides what each work call names
    std::string database; // empty: each work call's own database
    std::string startupHtml;
    std::string htmlUrl;
    std::string cgiUrl;
    std::string gifUrl;
    std::string htmlDir; // empty: the program's directory
    int vendor = 1;      // SGESQLITE, the embedded default
    std::string vendorName = "SQLITE";
    std::string user;
    std::string password;
    bool allowConfigFile = false;
    std::string configFile;
    bool printArgs = false;
    bool printEnv = false;
    bool loginRequired = false; // VlProcessLogin: the web server must have authenticated the user
    bool commonLog = false;     // a Common Log Format line per request on standard error
    // Kept as the main module sets them; they belong to the application
    // server, the state server and the ORB, which a CGI program does not use.
    bool allowSql = false; // SQL from a page is never run, whatever this says
    bool allowShutDown = true;
    bool useAppLogin = false;
    int apiMaxNum = 2;
    int cacheNumConn = 2;
    int sessTimeOut = 1200;
    long orbSeed = 0;
    std::string orbHost;
    std::string stateHost;
};

Settings &TheSettings();

// The vendor word of a constant (SQLITE, POSTGRES, ORACLE, ...), or empty.
std::string_view VendorWord(int vendor);

// The directory of the running program (from argv[0], else /proc/self/exe).
void SetProgramDir(const char *argv0);
const std::string &ProgramDir();
// path itself when absolute, else path under the program's directory.
std::string FromProgramDir(std::string_view path);

// Applies the configuration file over the settings when the program allows
// one; a missing file changes nothing.
void ReadConfigFile(Settings &s);

} // namespace vlrun

#endif
