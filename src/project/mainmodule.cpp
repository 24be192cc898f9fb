/* The main module record, its generation from main.tem, and the reading of
 * the three regions the user may edit in the generated main C source file:
 * includes and declarations, initial code and final code, each between its
 * two delimiter lines. */
#include "project/mainmodule.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>

#include <string>

#include "html/document.h"
#include "module/module.h"
#include "module/reader.h"
#include "project/naming.h"
#include "project/options.h"
#include "project/project.h"
#include "util/environment.h"
#include "util/files.h"
#include "util/heap.hpp"
#include "util/messages.h"
#include "util/safefile.h"
#include "util/strings.h"

namespace {

VlMainModule *CurrentMain() {
    return theProj ? theProj->mainModule : nullptr;
}

int SetText(char *VlMainModule::*field, const char *text) {
    VlMainModule *main = CurrentMain();
    if (!main) return 0;
    main->*field = StrDup(text);
    theProj->saved = 0;
    return 1;
}

char *GetText(char *VlMainModule::*field) {
    VlMainModule *main = CurrentMain();
    return main ? main->*field : nullptr;
}

void Replace(char *&field, char *text) {
    free(field);
    field = text;
}

const char kIncludesStart[] = "/* Velmora Start Of User Includes */\n";
const char kIncludesEnd[] = "/* Velmora End Of User Includes */\n";
const char kDeclStart[] = "/* Velmora Start Of Callback Declarations */\n";
const char kDeclEnd[] = "/* Velmora End Of Callback Declarations */\n";
const char kInitStart[] = "\t/* Velmora Start Of Initial Code */\n";
const char kInitEnd[] = "\t/* Velmora End Of Initial Code */\n";
const char kRegStart[] = "\t/* Velmora Start Of Callback Registration */\n";
const char kRegEnd[] = "\t/* Velmora End Of Callback Registration */\n";
const char kFinalStart[] = "\t/* Velmora Start Of Final Code */\n";
const char kFinalEnd[] = "\t/* Velmora End Of Final Code */\n";

// One piece of the template, found from where the previous piece ended; a
// piece that is not there writes nothing.
void WritePiece(FILE *fp, const char **cursor, const char *after, const char *before) {
    VlCharPtr piece(VlParseSection(*cursor, after, before, cursor));
    if (piece) fputs(piece.get(), fp);
}

// A user region: its delimiter lines always, the user's text with DOS line
// ends made Unix ones between them.
void WriteUserRegion(FILE *fp, const char *start, const char *text, const char *end) {
    fputs(start, fp);
    if (text) {
        VlCharPtr unix(VlDosToUnix(text));
        fputs(unix.get(), fp);
    }
    fputs(end, fp);
}

// The module name of each module's page, in project order; modules whose page
// has none are left out.
template <typename Fn> void ForEachModuleName(Fn fn) {
    for (int i = 0; i < SutSizList(theProj->modules); i++) {
        VlModule *module = static_cast<VlModule *>(SutGetNList(theProj->modules, i));
        if (const char *name = VlHtmlGetModName(VlModuleGetHtml(module))) fn(name);
    }
}

bool IsTrue(const VlCharPtr &value) {
    return value && strcmp(value.get(), "True") == 0;
}

// The runtime setup calls of the registration region, from the options.
// "mode" settings come from "Release." during a release, else from "Test.".
std::string SetupCalls() {
    const char *mode = theProj->releaseMode ? "Release." : "Test.";
    auto option = [](const char *category, const char *name) {
        return VlCharPtr(VlProjGetOptionByCat(category, name));
    };
    std::string out = "\tVlInitHeaders();\n";
    out += VlProjRelocatable() ? "\tVlRelocatableProject(1);\n" : "\tVlRelocatableProject(0);\n";

    auto text = [&](const char *format, const VlCharPtr &value) {
        if (!value) return;
        std::string line = format;
        line.replace(line.find("%s"), 2, value.get());
        out += line;
    };
    auto number = [&](const char *format, const VlCharPtr &value, const char *absent) {
        text(format, value);
        if (!value) text(format, VlCharPtr(VlCopyString(absent)));
    };
    auto flag = [&](const char *call, const VlCharPtr &value, int absent) {
        if (!value && absent < 0) return;
        const int on = value ? IsTrue(value) : absent;
        out += std::string("\t") + call + (on ? "(1);\n" : "(0);\n");
    };

    VlCharPtr server = option(mode, "Database Server"), database = option(mode, "Database Name");
    if (server && database)
        out +=
            std::string("\tVlSetDefaults(\"") + server.get() + "\",\"" + database.get() + "\");\n";
    text("\tVlSetStartupHtml(\"%s\");\n", option("Project.", "HTML Startup Document"));
    text("\tVlSetHtmlURL(\"%s\");\n", option(mode, "HTML URL"));
    number("\tVlSetApiMaxNum(%s);\n", option("App Server.", "Max Requests"), "2");
    flag("VlAllowShutDown", option("App Server.", "Allow Shutdown"), 1);
    number("\tVlSetCacheNumConn(%s);\n", option("App Server.", "Cached Connections"), "2");
    number("\tVlSetSessTimeOut(%s);\n", option("App Server.", "Timeout"), "1200");
    text("\tVlSetGifURL(\"%s\");\n", option(mode, "GIF URL"));
    text("\tVlSetDefaultVendor(SGE%s);\n", option(mode, "Database Vendor"));
    text("\tVlSetOrbHost(\"%s\");\n", option(mode, "ORB_HOST"));
    VlCharPtr seed = option(mode, "ORB_SEED");
    if (seed && *seed) text("\tVlSetOrbSeed(%s);\n", seed);
    text("\tVlSetDefaultUser(\"%s\");\n", option(mode, "Database User Name"));
    text("\tVlSetDefaultPass(\"%s\");\n", option(mode, "Database User Password"));
    flag("VlAllowSQL", option("Project.", "Allow SQL in HTML"), -1);
    flag("VlAllowConfigFile", option("Project.", "Allow Config File"), -1);
    text("\tVlSetConfigFile(\"%s\");\n", option("Project.", "Config File Name"));
    if (VlCharPtr path = option(mode, "HTML Path")) {
        // A drive-qualified path keeps only what follows its first colon.
        const char *colon = strchr(path.get(), ':');
        text("\tVlSetHtmlDir(\"%s\");\n", VlCharPtr(VlCopyString(colon ? colon + 1 : path.get())));
    }
    flag("VlSetPrintArgs", option("Project.", "Print Form Args"), -1);
    flag("VlSetPrintEnv", option("Project.", "Print Environment"), -1);
    flag("VlProcessLogin", option("Project.", "Secure Login"), 0);
    flag("VlSetDoCommonLog", option("Project.", "Use Common Login"), 0);
    // The application-login call follows the native OS login switch.
    flag("VlSetUseAppLogin", option("Project.", "Use Native OS Login"), 0);
    text("\tVlSetStateHost(\"%s\");\n", option(mode, "STATE_HOST"));
    return out;
}

} // namespace

extern "C" {

VlMainModule *VlMainModuleNewEmpty(void) {
    return static_cast<VlMainModule *>(calloc(1, sizeof(VlMainModule)));
}

VlMainModule *VlMainModuleNew(void) {
    return nullptr;
}

int VlMainModuleRead(const char *fileName) {
    // A main module that exists but cannot be read whole has been reported
    // and stops the run's writing: its user regions would be lost.
    VlCharPtr text(VlReadFileWhole(fileName, nullptr));
    if (!text) {
        VlPrintError("Could not read file in VlMainModuleRead:");
        VlPrintError(fileName);
        VlPrintError("\n");
        return 0;
    }
    struct stat st;
    if (stat(fileName, &st) != 0) return 0;
    VlMainModule *main = CurrentMain();
    if (!main) return 0;
    main->modTime = st.st_mtime;

    // Each search goes on from where the previous region ended; a missing
    // region gives null and leaves the position where it was.
    const char *cursor = text.get();
    Replace(main->declarations, VlParseSection(cursor, "/* Velmora Start Of User Includes */\n",
                                               "/* Velmora End Of User Includes */\n", &cursor));
    Replace(main->initialCode, VlParseSection(cursor, "\t/* Velmora Start Of Initial Code */\n",
                                              "\t/* Velmora End Of Initial Code */\n", &cursor));
    Replace(main->finalCode, VlParseSection(cursor, "\t/* Velmora Start Of Final Code */\n",
                                            "\t/* Velmora End Of Final Code */\n", &cursor));
    return 1;
}

int VlMainModuleWrite(const char *fileName) {
    VlMainModule *main = CurrentMain();
    if (!main) return 0;
    VlCharPtr dist(GetVelmoraDir());
    if (!dist) {
        VlPrintError("VELMORA");
        VlPrintError("environment variable is not set ");
        VlPrintError("\n");
        return 0;
    }
    const std::string templatePath = std::string(dist.get()) + "/config/" + "main.tem";
    VlCharPtr text(VlReadFile(templatePath.c_str()));
    if (!text) {
        VlPrintError("Could find main template in VlMainModuleWrite:");
        VlPrintError(templatePath.c_str());
        VlPrintError("\n");
        return 0;
    }
    FILE *fp = fileName ? VlOpenSafely(fileName) : nullptr;
    if (!fp) {
        VlPrintError("Could not write file in VlMainModuleWrite :");
        VlPrintError(fileName);
        VlPrintError("\n");
        return 0;
    }

    // The template's own text between the regions is copied; whatever it
    // holds inside them is replaced.
    const char *cursor = text.get();
    WritePiece(fp, &cursor, nullptr, kIncludesStart);
    WriteUserRegion(fp, kIncludesStart, main->declarations, kIncludesEnd);
    WritePiece(fp, &cursor, kIncludesEnd, kDeclStart);
    fputs(kDeclStart, fp);
    ForEachModuleName([fp](const char *name) { fprintf(fp, "extern void R_%s ();\n", name); });
    fputs(kDeclEnd, fp);
    WritePiece(fp, &cursor, kDeclEnd, kInitStart);
    WriteUserRegion(fp, kInitStart, main->initialCode, kInitEnd);
    WritePiece(fp, &cursor, kInitEnd, kRegStart);
    fputs(kRegStart, fp);
    ForEachModuleName([fp](const char *name) { fprintf(fp, "\tR_%s ();\n", name); });
    fputs(SetupCalls().c_str(), fp);
    fputs(kRegEnd, fp);
    WritePiece(fp, &cursor, kRegEnd, kFinalStart);
    WriteUserRegion(fp, kFinalStart, main->finalCode, kFinalEnd);
    WritePiece(fp, &cursor, kFinalEnd, nullptr);
    return VlCloseSafely(fp) >= 0 ? 1 : 0;
}

int VlProjMainSetDeclarations(const char *text) {
    return SetText(&VlMainModule::declarations, text);
}
int VlProjMainSetInitialCode(const char *text) {
    return SetText(&VlMainModule::initialCode, text);
}
int VlProjMainSetFinalCode(const char *text) {
    return SetText(&VlMainModule::finalCode, text);
}
char *VlProjMainGetDeclarations(void) {
    return GetText(&VlMainModule::declarations);
}
char *VlProjMainGetInitialCode(void) {
    return GetText(&VlMainModule::initialCode);
}
char *VlProjMainGetFinalCode(void) {
    return GetText(&VlMainModule::finalCode);
}

} // extern "C"
