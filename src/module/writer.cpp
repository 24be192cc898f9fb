/* Writes a module record as a C source file. The user's includes and the three
 * code sections of each function go between fixed markers that the reader
 * finds again; the function headers and the registration function R_<module>
 * are generated from the page's current form and anchor names. */
#include "module/writer.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <memory>
#include <string>

#include "html/document.h"
#include "project/naming.h"
#include "util/files.h"
#include "util/heap.hpp"
#include "util/messages.h"
#include "util/safefile.h"

namespace {

/* Appends the text with DOS line ends made Unix ones (every carriage return
 * dropped, as VlDosToUnix does, without a copy); null appends nothing. */
void AppendUnix(std::string &out, const char *text) {
    if (!text) return;
    for (const char *run = text;;) {
        const size_t n = strcspn(run, "\r");
        out.append(run, n);
        if (!run[n]) return;
        run += n + 1;
    }
}

void AppendOwned(std::string &out, char *text) {
    if (text) out += text;
    free(text);
}

/* Function name (Forder) of the function's activator, a new string or null. */
char *FunctionName(const VlFunction *fn) {
    return fn->form ? VlHtmlFormGetFuncName(fn->form) : VlHtmlAnchGetFuncName(fn->anchor);
}

/* Full activator name (order__Fshop_html), the record's own string or null. */
const char *FullName(VlHtmlForm *form, VlHtmlAnch *anchor) {
    return form ? VlHtmlFormGetFullName(form) : VlHtmlAnchGetFullName(anchor);
}

std::string ModuleText(const VlModule *module, const char *fileName) {
    std::string out;
    out += "/* Velmora Module File V1.0B */\n"
           "/* Velmora Start Of Tool Includes */\n"
           "#include \"VlRnHtml.h\"\n"
           "/* Velmora Start Of user Includes */\n";
    AppendUnix(out, module->userIncludes);
    out += "static char _Vl_HTML_Filename[] = \"";
    if (const char *page = VlHtmlGetName(module->html)) out += page;
    out += "\";\n";

    const int count = SutSizList(module->functions);
    for (int i = 0; i < count; i++) {
        const auto *fn = static_cast<const VlFunction *>(SutGetNList(module->functions, i));
        out += "/*Velmora Start of Function */\nstatic void ";
        AppendOwned(out, FunctionName(fn));
        out += " ()\n/* start of initial code */\n{\n";
        AppendUnix(out, fn->initCode);
        out += "/* start of func Code */\n";
        AppendUnix(out, fn->funcCode);
        out += "/* end of func code */\n/* start of final code */\n";
        AppendUnix(out, fn->finalCode);
        out += "}/* end of final code */\n";
    }

    out += "void R_";
    if (const char *modName = VlHtmlGetModName(module->html)) out += modName;
    out += "()\n{\n";
    for (int i = 0; i < count; i++) {
        auto *fn = static_cast<VlFunction *>(SutGetNList(module->functions, i));
        out += "\tVlRegisterHtmlActivator(\"";
        if (const char *full = FullName(fn->form, fn->anchor)) out += full;
        out += "\",";
        AppendOwned(out, FunctionName(fn));
        out += ");\n";
    }
    // Alias names come from the aliased form or anchor as the page now names
    // it, not from the stored name, so a renamed activator is carried along.
    for (int i = 0; i < count; i++) {
        auto *fn = static_cast<VlFunction *>(SutGetNList(module->functions, i));
        const char *target = FullName(fn->form, fn->anchor);
        for (int j = 0; j < SutSizList(fn->aliases); j++) {
            auto *alias = static_cast<VlAlias *>(SutGetNList(fn->aliases, j));
            const char *name = FullName(alias->form, alias->anchor);
            if (!name || !target) {
                VlPrintError("Warning alias name is null while writing");
                VlPrintError(fileName);
                VlPrintError("\n");
                continue;
            }
            out += "\tVlRegisterHtmlAlias(\"";
            out += name;
            out += "\",\"";
            out += target;
            out += "\");\n";
        }
    }
    out += "\n}/* Velmora End of Module */\n";
    return out;
}

} // namespace

extern "C" {

int VlModuleWrite(VlModule *module, const char *fileName, int force) {
    if (!module || !fileName) return 0;
    if (module->saved && !force) return 1;

    const std::string text = ModuleText(module, fileName);
    // A module whose bytes would not change is left as it is on disk.
    const int written = VlWriteFileSafely(fileName, text.data(), text.size());
    if (written == VL_WRITE_NOT_OPENED) {
        VlPrintError(VlCatGets(10, 4, "Could not write file in VlModuleWrite "));
        VlPrintError(fileName);
        VlPrintError("\n");
    }
    // A failed write keeps the module marked unsaved.
    if (written < 0) return 0;
    module->saved = 1;
    if (VlProjCallReadWriteScripts()) VlRunFileScript("vlwritemodule.sh ", fileName);
    return 1;
}

} // extern "C"
