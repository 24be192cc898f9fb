// Project naming, relocation and the scripted runs. The two switches here
// decide whether the engine calls the distribution's read and write scripts
// around every file it touches, and whether CGI URLs are left to run time.
#include "project/naming.h"

#include <unistd.h>

#include <cstring>
#include <string>

#include "html/document.h"
#include "module/module.h"
#include "project/makefile.h"
#include "project/options.h"
#include "project/project.h"
#include "util/files.h"
#include "util/heap.hpp"
#include "util/messages.h"
#include "util/strings.h"

extern "C" {

int VlProjCallReadWriteScripts(void) {
    VlCharPtr value(VlProjGetOptionNoParse("Project.Call Read/Write Scripts"));
    return !value || strcmp(value.get(), "True") == 0 ? 1 : 0;
}

int VlProjRelocatable(void) {
    VlCharPtr value(VlProjGetOptionNoParse("Project.Relocatable Project"));
    return value && strcmp(value.get(), "True") == 0 ? 1 : 0;
}

int VlProjSetName(const char *path) {
    if (!theProj || !path) return 0;
    free(theProj->name);
    theProj->name = nullptr;

    VlCharPtr file(VlGetFileFromFullPath(path));
    std::string base = file ? file.get() : "noname";
    if (base.size() > 3 && base.compare(base.size() - 3, 3, ".pj") == 0)
        base.resize(base.size() - 3);

    int entered = 0;
    if (VlCharPtr dir{VlGetDirFromFullPath(path)}) {
        // "/shop" has the empty directory part: the root.
        const char *where = *dir ? dir.get() : "/";
        if (!VlDirExists(where) && (VlMkdir(where) != 0 || !VlDirExists(where))) {
            VlGUIError("Create directory failed.");
            return 0;
        }
        if (chdir(where) != 0) {
            VlGUIError("Change directory failed.");
            return 0;
        }
        entered = 1;
    }
    theProj->name = VlHeapCopy(base);

    VlCharPtr cgiUrl(VlProjGetCGIURL(theProj->releaseMode ? "Release." : "Test."));
    std::string url;
    if (cgiUrl) {
        url = cgiUrl.get();
    } else {
        char host[100];
        gethostname(host, 99); // looked up as the program always did; not used
        url = "/cgi-bin/";
    }
    VlCharPtr suffix(VlProjGetExeSuffix());
    url += "/" + base + suffix.get();
    // A relocatable project has its URL resolved when the application runs.
    const char *given = VlProjRelocatable() ? "$$VL_CGI_URL" : url.c_str();
    for (int i = 0; i < SutSizList(theProj->modules); i++)
        VlModuleSetURL(static_cast<VlModule *>(SutGetNList(theProj->modules, i)), given);
    VlHtmlSetProjName(given);
    return entered;
}

char *VlProjGetCGIURL(const char *category) {
    if (!category) return nullptr;
    VlCharPtr target(VlProjGetOptionByCat("Makefile.", "$VL_DEPLOYMENT_TARGET"));
    const char *option = "CGI URL";
    if (target && strcmp(target.get(), "NSAPI") == 0) option = "NSAPI URL";
    if (target && strcmp(target.get(), "ISAPI") == 0) option = "ISAPI URL";
    if (target && strcmp(target.get(), "GenericExtension") == 0) option = "Generic Extension URL";
    return VlProjGetOptionByCat(category, option);
}

} // extern "C"
