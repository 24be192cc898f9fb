/* The project's makefile: generated from the distribution's template by
 * substituting its "$VL_" tokens, and the executable suffix that names the
 * built program (also part of the program's URL). */
#include "project/makefile.h"

#include <cstdio>
#include <string>

#include "module/module.h"
#include "project/lookup.h"
#include "project/options.h"
#include "project/project.h"
#include "util/environment.h"
#include "util/files.h"
#include "util/heap.hpp"
#include "util/list.h"
#include "util/messages.h"
#include "util/safefile.h"
#include "util/strings.h"

extern "C" {

char *VlProjGetExeSuffix(void) {
    char *suffix = VlProjGetOptionByCat("Makefile.", "exeSuffix");
    return suffix ? suffix : VlCopyString(".exe");
}

int VlProjWriteMakefile(void) {
    if (!theProj || !theProj->name) return 0;
    VlCharPtr dist(GetVelmoraDir());
    if (!dist) {
        VlPrintError("distribution ");
        VlPrintError("environment variable is not set\n");
        return 0;
    }
    const std::string templatePath = std::string(dist.get()) + "/config/" + "Makefile.tem";
    VlCharPtr text(VlReadFile(templatePath.c_str()));
    if (!text) {
        VlPrintError("Could find makefile template in VlProjWriteMakeFile ");
        VlPrintError(templatePath.c_str());
        VlPrintError("\n");
        return 0;
    }
    const std::string fileName = std::string(theProj->name) + ".mak";
    FILE *fp = VlOpenSafely(fileName.c_str());
    if (!fp) {
        VlPrintError("Could open file for write ");
        VlPrintError(fileName.c_str());
        VlPrintError("\n");
        return 0;
    }

    // Every module on a line of its own, continued with a backslash but the last.
    std::string modules;
    const int count = SutSizList(theProj->modules);
    for (int i = 0; i < count; i++) {
        VlCharPtr name(
            VlModuleGetCFileName(static_cast<VlModule *>(SutGetNList(theProj->modules, i))));
        modules += "\t" + std::string(name ? name.get() : "") + (i + 1 < count ? "\\\n" : "\n");
    }
    VlCharPtr suffix(VlProjGetExeSuffix());
    const std::string executable = std::string(theProj->name) + suffix.get();

    // The order matters: of two tokens where one begins with the other the
    // earlier wins, and an unknown token takes the last one's text.
    SutList *tokens = SutNewList();
    SutList *values = SutNewList();
    auto add = [&](const char *token, char *value) {
        SutAddList(tokens, VlCopyString(token));
        SutAddList(values, value);
    };
    auto option = [&](const char *token) { add(token, VlProjGetOptionByCat("Makefile.", token)); };
    option("$VL_SOURCE_SUFFIX");
    option("$VL_LANGUAGE");
    option("$VL_DEPLOYMENT_TARGET");
    add("$VL_EXECUTABLE", VlHeapCopy(executable));
    option("$VL_USER_CFLAGS");
    option("$VL_USER_LD_FLAGS");
    option("$VL_APPL_OBJS");
    option("$VL_APPL_LIBS");
    option("$VL_SYSTEM_LIBS");
    option("$VL_CGI_TARGET");
    add("$VL_MAIN", VlProjGetMainCFileName());
    add("$VL_MODULES", VlHeapCopy(modules));

    VlCharPtr result(VlStrSubsList(text.get(), tokens, values, "$VL_"));
    SutDestroyList(tokens);
    SutDestroyList(values);
    std::fputs(result ? result.get() : "", fp);
    return VlCloseSafely(fp) >= 0 ? 1 : 0;
}

} // extern "C"
