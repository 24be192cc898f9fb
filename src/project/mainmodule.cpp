/* The main module record and the reading of the three regions the user may
 * edit in the generated main C source file: includes and declarations,
 * initial code and final code, each between its two delimiter lines. */
#include "project/mainmodule.h"

#include <stdlib.h>
#include <sys/stat.h>

#include "module/reader.h"
#include "project/project.h"
#include "util/files.h"
#include "util/heap.hpp"
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

} // namespace

extern "C" {

VlMainModule *VlMainModuleNewEmpty(void) {
    return static_cast<VlMainModule *>(calloc(1, sizeof(VlMainModule)));
}

VlMainModule *VlMainModuleNew(void) {
    return nullptr;
}

int VlMainModuleRead(const char *fileName) {
    VlCharPtr text(VlReadFile(fileName));
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
