// Project options: one lookup decides which of four places gives an option its
// value (command line, project, the user's option file, the distribution's
// global option file). The two files are loaded by the first lookup that finds
// them, option names of older versions are upgraded with a message, and the
// user's options can be saved as the merged set.
#include "project/options.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "project/project.h"
#include "util/environment.h"
#include "util/files.h"
#include "util/heap.hpp"
#include "util/messages.h"
#include "util/options.h"
#include "util/safefile.h"
#include "util/strings.h"

SutList *theUserOptions = nullptr;
SutList *theGlobalOptions = nullptr;

namespace {

constexpr const char *kOptionFile = "Velmora.cfg";

// Option names written by older versions, without a category, and what they
// are called now. Old database settings all become test settings.
struct Rename {
    const char *oldName, *category, *newName;
};
constexpr Rename kRenames[] = {
    {"CGI test URL", "Test.", "CGI URL"},
    {"CGI test Path", "Test.", "CGI Path"},
    {"HTML test URL", "Test.", "HTML URL"},
    {"HTML test Path", "Test.", "HTML Path"},
    {"HTML Startup Document", "Project.", "HTML Startup Document"},
    {"Allow SQL in HTML", "Project.", "Allow SQL in HTML"},
    {"Print Form Args", "Project.", "Print Form Args"},
    {"Database Name", "Test.", "Database Name"},
    {"Database Server", "Test.", "Database Server"},
    {"Database Vendor", "Test.", "Database Vendor"},
    {"Database User Name", "Test.", "Database User Name"},
    {"Database User Password", "Test.", "Database User Password"},
    {"$VL_USER_CFLAGS", "Makefile.", "$VL_USER_CFLAGS"},
    {"$VL_USER_LD_FLAGS", "Makefile.", "$VL_USER_LD_FLAGS"},
    {"$VL_APPL_OBJS", "Makefile.", "$VL_APPL_OBJS"},
    {"$VL_APPL_LIBS", "Makefile.", "$VL_APPL_LIBS"},
    {"$VL_SYSTEM_LIBS", "Makefile.", "$VL_SYSTEM_LIBS"},
    {"$VL_LANGUAGE", "Makefile.", "$VL_LANGUAGE"},
    {"$VL_SOURCE_SUFFIX", "Makefile.", "$VL_SOURCE_SUFFIX"},
    {"exeSuffix", "Makefile.", "exeSuffix"},
};

// The command-line argument table: name and value pairs in the order set.
std::vector<std::pair<std::string, std::string>> &CmdLineTable() {
    static std::vector<std::pair<std::string, std::string>> table;
    return table;
}

// $HOME/Velmora.cfg, or "" when HOME is unset or empty.
std::string UserOptionPath() {
    VlCharPtr home(VlGetEnv("HOME"));
    return *home ? std::string(home.get()) + "/" + kOptionFile : std::string();
}

// <distribution>/config/Velmora.cfg, or "" without a distribution directory.
std::string GlobalOptionPath() {
    const char *dist = VlGetDistDir();
    return dist && *dist ? std::string(dist) + "/config/" + kOptionFile : std::string();
}

// A missing file leaves its set unloaded, so the next lookup tries again; an
// existing file, even an empty one, loads. One that cannot be read whole has
// been reported and keeps the run from writing; it loads as an empty set, so
// it is not reported again at every lookup.
SutList *LoadOptionFile(const std::string &path) {
    if (path.empty() || !VlFileExists(path.c_str())) return nullptr;
    VlCharPtr text(VlReadFileWhole(path.c_str(), nullptr));
    return text ? VlOptionGetFromString(text.get()) : SutNewList();
}

void LoadUserOptions() {
    if (theUserOptions) return;
    std::string path = UserOptionPath();
    theUserOptions = LoadOptionFile(path);
    if (theUserOptions && VlProjUpgradeOptions(theUserOptions)) {
        VlPrintError(path.c_str());
        VlPrintError(" contains options from an old version of Velmora\n");
        VlPrintError("Please save your user options from the options editor.\n");
    }
}

void LoadGlobalOptions() {
    if (theGlobalOptions) return;
    std::string path = GlobalOptionPath();
    theGlobalOptions = LoadOptionFile(path);
    if (SutSizList(theGlobalOptions) <= 0) {
        VlPrintError("Global Options File Not Found\n");
        VlGUIError("Global Options File Not Found");
    } else if (VlProjUpgradeOptions(theGlobalOptions)) {
        VlPrintError(path.c_str());
        VlPrintError(" contains options from an old version of Velmora\n");
        VlPrintError("Please have the tool administrator fix the file.\n");
    }
}

// Appends copies of list's lines with the option merge rule (a line of a name
// already present replaces it in place).
void MergeInto(SutList *merged, SutList *list) {
    for (int i = 0; i < SutSizList(list); i++) {
        const auto *line = static_cast<const char *>(SutGetNList(list, i));
        if (!line) continue;
        char *copy = StrDup(line);
        VlAppendOption(merged, copy);
        if (SutGetPosFromItem(merged, copy) < 0) free(copy); // not taken: no name
    }
}

} // namespace

extern "C" {

const char *VlCmdLineGetOption(const char *fullName) {
    if (!fullName) return nullptr;
    for (const auto &[name, value] : CmdLineTable())
        if (name == fullName) return value.c_str();
    return nullptr;
}

int VlCmdLineSetOption(const char *fullName, const char *value) {
    if (!fullName) return 0;
    auto &table = CmdLineTable();
    for (auto it = table.begin(); it != table.end(); ++it) {
        if (it->first != fullName) continue;
        if (value)
            it->second = value;
        else
            table.erase(it);
        return 1;
    }
    if (value) table.emplace_back(fullName, value);
    return 1;
}

void VlCmdLineClearOptions(void) {
    CmdLineTable().clear();
}

void VlProjResetOptionFiles(void) {
    SutDestroyList(theUserOptions);
    SutDestroyList(theGlobalOptions);
    theUserOptions = nullptr;
    theGlobalOptions = nullptr;
}

char *VlProjGetOptionNoParse(const char *fullName) {
    LoadUserOptions();
    LoadGlobalOptions();
    if (!fullName) return nullptr;
    if (const char *value = VlCmdLineGetOption(fullName)) return StrDup(value);
    SutList *sets[] = {theProj ? theProj->options : nullptr, theUserOptions, theGlobalOptions};
    for (SutList *set : sets)
        if (char *value = VlGetStrippedOptionValue(set, fullName)) return value;
    return nullptr;
}

char *VlProjGetOption(const char *fullName) {
    if (!theProj) return nullptr;
    VlCharPtr raw(VlProjGetOptionNoParse(fullName));
    if (!raw) return nullptr;
    VlCharPtr login(VlGetEnv("LOGNAME"));
    VlCharPtr withProject(VlStrSubs(raw.get(), "#proj", theProj->name));
    return VlStrSubs(withProject.get(), "#user", login.get());
}

char *VlProjGetOptionByCat(const char *category, const char *name) {
    std::string fullName = std::string(category ? category : "") + (name ? name : "");
    return VlProjGetOption(fullName.c_str());
}

int VlProjRenameOption(SutList *list, const char *oldName, const char *newCategory,
                       const char *newName) {
    int index = -1;
    VlCharPtr value(VlGetOption(list, oldName, &index));
    if (!value) return 0;
    std::string fullName = std::string(newCategory ? newCategory : "") + (newName ? newName : "");
    char *line = VlMakeOptionString(fullName.c_str(), value.get());
    if (!line) return 0;
    free(SutReplaceNList(list, index, line));
    return 1;
}

int VlProjUpgradeOptions(SutList *list) {
    if (!list) return 0;
    int upgraded = 0;
    for (const Rename &r : kRenames)
        if (VlProjRenameOption(list, r.oldName, r.category, r.newName)) upgraded = 1;
    return upgraded;
}

SutList *VlProjBuildOptionsList(void) {
    // Only to make sure both option files are loaded.
    free(VlProjGetOptionNoParse("Makefile.$VL_SOURCE_SUFFIX"));
    SutList *merged = SutNewList();
    for (int i = 0; i < SutSizList(theGlobalOptions); i++) {
        const auto *line = static_cast<const char *>(SutGetNList(theGlobalOptions, i));
        if (line) SutAddList(merged, StrDup(line));
    }
    MergeInto(merged, theUserOptions);
    MergeInto(merged, theProj ? theProj->options : nullptr);
    return merged;
}

int VlProjSaveUserOptions(void) {
    SutList *merged = VlProjBuildOptionsList();
    std::string path = UserOptionPath();
    FILE *out = path.empty() ? nullptr : VlOpenSafely(path.c_str());
    if (!out) {
        VlGUIError("Could not open user's option file for write.");
        SutDestroyList(merged);
        return 0;
    }
    for (int i = 0; i < SutSizList(merged); i++) {
        const auto *line = static_cast<const char *>(SutGetNList(merged, i));
        if (line) fprintf(out, "%s\n", line);
    }
    if (VlCloseSafely(out) < 0) {
        SutDestroyList(merged);
        return 0;
    }
    SutDestroyList(theUserOptions);
    theUserOptions = merged;
    return 1;
}

} // extern "C"
