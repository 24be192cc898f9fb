/* The configuration file of the generated CGI program. It holds the settings
 * that the program would otherwise take from the setup calls compiled into
 * its main module, so a site can change them without a rebuild. */
#include "project/configfile.h"

#include <cstring>
#include <string>

#include "project/options.h"
#include "project/project.h"
#include "util/heap.hpp"
#include "util/messages.h"
#include "util/safefile.h"
#include "util/strings.h"

SutList *theConfigOptions = nullptr;
SutList *theConfigCatagories = nullptr;

namespace {

// What the program reads at run time. The database password is deliberately
// not among them: the configuration file is installed where the web server
// can reach it (and is listed in the release README), so a password written
// there would be published.
const char *const kProjectOptions[] = {
    "HTML Startup Document", "Allow SQL in HTML", "Print Form Args",     "Print Environment",
    "Secure Login",          "Use Common Login",  "Use Native OS Login",
};
const char *const kModeOptions[] = {
    "CGI URL",         "HTML URL",      "HTML Path",       "GIF URL",
    "Database Server", "Database Name", "Database Vendor", "Database User Name",
    "STATE_HOST",      "ORB_HOST",      "ORB_SEED",
};

} // namespace

extern "C" {

int VlProjBuildConfigOptions(void) {
    SutDestroyList(theConfigOptions);
    SutDestroyList(theConfigCatagories);
    theConfigOptions = SutNewList();
    theConfigCatagories = SutNewList();
    for (const char *name : kProjectOptions) {
        SutAddList(theConfigOptions, VlCopyString(name));
        SutAddList(theConfigCatagories, VlCopyString("Project."));
    }
    // Entered as "Test." options; the writer takes the value of the mode in hand.
    for (const char *name : kModeOptions) {
        SutAddList(theConfigOptions, VlCopyString(name));
        SutAddList(theConfigCatagories, VlCopyString("Test."));
    }
    return 1;
}

int VlProjWriteConfigFileLL(FILE *fp, const char *modeCategory) {
    if (!fp || !modeCategory) return 0;
    for (int i = 0; i < SutSizList(theConfigOptions); i++) {
        const char *name = static_cast<const char *>(SutGetNList(theConfigOptions, i));
        const char *category = static_cast<const char *>(SutGetNList(theConfigCatagories, i));
        if (!name || !category) continue;
        if (std::strcmp(category, "Project.") == 0) {
            VlCharPtr value(VlProjGetOptionByCat("Project.", name));
            if (value && *value) std::fprintf(fp, "%s%s : %s\n", category, name, value.get());
        } else if (std::strcmp(category, "Test.") == 0 || std::strcmp(category, "Release.") == 0) {
            // A "Test." entry takes the release value during a release.
            VlCharPtr value(VlProjGetOptionByCat(modeCategory, name));
            if (value && *value) std::fprintf(fp, "%s : %s\n", name, value.get());
        }
    }
    return 1;
}

int VlProjWriteConfigFile(void) {
    if (!theProj) return 0;
    VlCharPtr allow(VlProjGetOptionByCat("Project.", "Allow Config File"));
    if (!allow || std::strcmp(allow.get(), "True") != 0) return 1;
    const char *mode = theProj->releaseMode ? "Release." : "Test.";
    VlProjBuildConfigOptions();

    // Only the file part counts: the file always goes into the project directory.
    VlCharPtr configured(VlProjGetOptionByCat("Project.", "Config File Name"));
    VlCharPtr name(VlGetFileFromFullPath(configured.get()));
    if (!name) {
        VlPrintError("Could not determine config file name.\n");
        VlPrintError("Make sure the option ");
        VlPrintError("Config File Name");
        VlPrintError(" is defined.\n");
        return 0;
    }
    FILE *fp = VlOpenSafely(name.get());
    if (!fp) {
        VlPrintError("Could open file for write ");
        VlPrintError(name.get());
        VlPrintError("\n");
        return 0;
    }
    VlProjWriteConfigFileLL(fp, mode);
    return VlCloseSafely(fp) >= 0 ? 1 : 0;
}

} // extern "C"
