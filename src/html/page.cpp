// Reading a page file into a document, the working copy under "in_use" that
// collects every change the engine makes to the page, and the save that copies
// the working copy back over the page. A page is never edited in place.
#include "html/page.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "html/keywords.h"
#include "html/markup.h"
#include "html/markup_text.hpp"
#include "html/scanner.h"
#include "project/naming.h"
#include "util/files.h"
#include "util/heap.hpp"
#include "util/messages.h"
#include "util/process.h"
#include "util/runstate.h"
#include "util/safefile.h"

namespace {

constexpr const char *kBackupDir = "in_use";

// Runs a distribution script on a page and waits; its status does not matter.
void RunPageScript(const char *script, const char *page) {
    VlCharPtr quoted(VlShellQuoteName(page));
    std::string command = std::string(script) + quoted.get();
    fflush(stdout);
    fflush(stderr);
    VlLaunchAndBlock(command.c_str());
}

bool HasName(const VlHtmlDoc *doc) {
    return doc && doc->name && *doc->name;
}

// The working copy of a page as it was read. When it cannot be made, the
// page would drop out of the project: that is said, with the reason, and the
// run writes nothing back.
bool MakeWorkingCopy(const char *file, const char *text) {
    // A page in a subdirectory has its working copy in the same
    // subdirectory of in_use; a failure here shows up at the write.
    const std::filesystem::path dir = std::filesystem::path(file).parent_path();
    std::error_code ec;
    if (dir != kBackupDir) std::filesystem::create_directories(dir, ec);
    std::string why;
    if (!VlPathInsideWorkingDir(file)) {
        why = std::string(": ") + file + " lies outside the project directory\n";
    } else {
        const int written = VlWriteFileSafely(file, text, strlen(text));
        if (written >= 0) return true;
        // A failure after the file was opened has been reported with its reason.
        why = written == VL_WRITE_NOT_OPENED
                  ? std::string(": ") + file + ": " + strerror(errno) + "\n"
                  : std::string("\n");
    }
    VlPrintError("Error making backup. Probably directory write permissions");
    VlPrintError(why.c_str());
    VlRefuseWrites();
    return false;
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
    return VlOpenSafely(fileName);
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
    VlCharPtr text(VlReadFileWhole(pageName, &modTime));
    if (!text) return nullptr;
    VlCharPtr backup(VlGetBackupFileName(pageName));
    VlHtmlDoc *doc = VlReadHtmlDesignTime(text.get());
    doc->modTime = modTime;
    VlHtmlSetName(doc, pageName);
    if (!MakeWorkingCopy(backup.get(), text.get())) {
        VlHtmlDelete(doc);
        return nullptr;
    }
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
    // The passes follow one another in memory and the working copy takes
    // their result in one write, so it never holds some of the changes only.
    // The two buffers are kept from page to page, so a run allocates (and
    // the system maps in) room for its largest output once, not twice a page.
    thread_local std::string marked, spare;
    marked.assign(text.get());
    const bool anchors = doc->anchorsChanged != 0;
    if (anchors) vlmarkup::RunPass(doc, marked, spare, 1);
    if (anchors && VlAnyKeys()) vlmarkup::RunPass(doc, marked, spare, 2);
    if (doc->formsChanged) vlmarkup::RunPass(doc, marked, spare, 0);
    if (anchors || doc->formsChanged) {
        const int written = VlWriteFileSafely(file.get(), marked.data(), marked.size());
        if (written == VL_WRITE_NOT_OPENED) VlReportWriteFailure(file.get(), errno);
        if (written < 0) return 1;
    }
    // Site names are not written into pages; with only sites changed the
    // working copy keeps its text instead of being emptied.
    doc->sitesChanged = 0;
    doc->formsChanged = 0;
    doc->anchorsChanged = 0;
    return 0;
}

int VlHtmlSave(VlHtmlDoc *doc) {
    if (!HasName(doc)) return 1;
    // When the working copy could not take the changes, the page keeps its
    // old text too.
    if (VlHtmlBackup(doc) != 0) return 1;
    VlCharPtr file(VlGetBackupFileName(doc->name));
    VlCharPtr text(VlReadFile(file.get()));
    if (!text) return 1;
    // A page whose bytes would not change is left as it is on disk.
    const int written = VlWriteFileSafely(doc->name, text.get(), strlen(text.get()));
    if (written == VL_WRITE_NOT_OPENED) VlReportWriteFailure(doc->name, errno);
    if (written < 0) return 1;
    if (VlProjCallReadWriteScripts()) RunPageScript("vlwritehtml.sh ", doc->name);
    doc->changed = 0;
    doc->modTime = VlGetFileModTime(doc->name);
    return 0;
}

} // extern "C"
