// Reading a page file into a document, the working copy under "in_use" that
// collects every change the engine makes to the page, and the save that copies
// the working copy back over the page. A page is never edited in place.
#include "html/page.h"

#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "html/keywords.h"
#include "html/markup.h"
#include "html/markup_text.hpp"
#include "html/scanner.h"
#include "project/naming.h"
#include "util/files.h"
#include "util/heap.hpp"
#include "util/messages.h"
#include "util/process.h"

namespace {

constexpr const char *kBackupDir = "in_use";

// Runs a distribution script on a page and waits; its status does not matter.
void RunPageScript(const char *script, const char *page) {
    VlCharPtr quoted(VlShellQuote(page));
    std::string command = std::string(script) + quoted.get();
    fflush(stdout);
    fflush(stderr);
    VlLaunchAndBlock(command.c_str());
}

bool HasName(const VlHtmlDoc *doc) {
    return doc && doc->name && *doc->name;
}

// One markup pass from text into the named file; false when it cannot be opened.
bool RunPass(VlHtmlDoc *doc, const char *text, const char *file, int pass) {
    FILE *out = VlGetBackupFile(file);
    if (!out) return false;
    VlMarkupHtmlDesignTimeForms(doc, text, out, pass);
    fclose(out);
    return true;
}

} // namespace

extern "C" {

int VlHtmlMakeBackupDir(void) {
    struct stat st;
    if (stat(kBackupDir, &st) == 0) return 0;
    std::string command = std::string("\\mkdir -p ") + kBackupDir;
    fflush(stdout);
    fflush(stderr);
    return VlLaunchAndBlock(command.c_str());
}

char *VlGetBackupFileName(const char *pageName) {
    if (!pageName) return nullptr;
    VlHtmlMakeBackupDir();
    return VlHeapCopy(std::string(kBackupDir) + "/" + pageName + ".vlm");
}

FILE *VlGetBackupFile(const char *fileName) {
    if (!fileName) return nullptr;
    return fopen(fileName, "w");
}

time_t VlGetFileModTime(const char *fileName) {
    struct stat st;
    if (!fileName || stat(fileName, &st) != 0 || !S_ISREG(st.st_mode)) return -1;
    return st.st_mtime;
}

VlHtmlDoc *VlHtmlNewFromFile(const char *pageName) {
    if (!pageName) return nullptr;
    if (VlProjCallReadWriteScripts()) RunPageScript("vlreadhtml.sh ", pageName);
    time_t modTime = 0;
    VlCharPtr text(VlReadFileAndMod(pageName, &modTime));
    if (!text) return nullptr;
    VlCharPtr backup(VlGetBackupFileName(pageName));
    VlHtmlDoc *doc = VlReadHtmlDesignTime(text.get());
    doc->modTime = modTime;
    VlHtmlSetName(doc, pageName);
    FILE *out = VlGetBackupFile(backup.get());
    if (!out) {
        VlPrintError("Error making backup. Probably directory write permissions");
        VlHtmlDelete(doc);
        return nullptr;
    }
    fputs(text.get(), out);
    fclose(out);
    VlHtmlMarkOrigNames(doc);
    return doc;
}

int VlHtmlBackup(VlHtmlDoc *doc) {
    if (!HasName(doc)) return 1;
    if (!doc->formsChanged && !doc->sitesChanged && !doc->anchorsChanged) return 0;
    VlCharPtr file(VlGetBackupFileName(doc->name));
    VlCharPtr text(VlReadFile(file.get()));
    // Without a working copy there is nothing to write the changes into; the
    // flags stay set so that a later save still knows about them.
    if (!text) return 1;

    // Each pass reads what the previous one left: anchors, keywords, forms.
    // The passes chain in memory and the last one writes the working copy,
    // which then holds what it held when every pass wrote it in turn.
    std::vector<int> passes;
    if (doc->anchorsChanged) {
        passes.push_back(1);
        if (VlAnyKeys()) passes.push_back(2);
    }
    if (doc->formsChanged) passes.push_back(0);
    std::string current = text.get();
    for (size_t i = 0; i + 1 < passes.size(); i++) {
        std::string marked;
        vlmarkup::MarkPass(doc, current, passes[i], marked);
        current.swap(marked);
    }
    if (!passes.empty() && !RunPass(doc, current.c_str(), file.get(), passes.back())) return 1;
    // Site names are not written into pages; with only sites changed the
    // working copy keeps its text instead of being emptied.
    doc->sitesChanged = 0;
    doc->formsChanged = 0;
    doc->anchorsChanged = 0;
    return 0;
}

int VlHtmlSave(VlHtmlDoc *doc) {
    if (!HasName(doc)) return 1;
    VlHtmlBackup(doc);
    VlCharPtr file(VlGetBackupFileName(doc->name));
    VlCharPtr text(VlReadFile(file.get()));
    if (!text) return 1;
    FILE *out = VlGetBackupFile(doc->name);
    if (!out) return 1;
    fprintf(out, "%s", text.get());
    fclose(out);
    if (VlProjCallReadWriteScripts()) RunPageScript("vlwritehtml.sh ", doc->name);
    doc->changed = 0;
    doc->modTime = VlGetFileModTime(doc->name);
    return 0;
}

} // extern "C"
