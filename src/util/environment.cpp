// Environment variables as never-null strings, and the distribution directory:
// VELMORA read once, with one trailing separator taken off, and kept for the
// rest of the process.
#include "util/environment.h"

#include "util/strings.h"

#include <cstdlib>
#include <cstring>

char *theDistDir = nullptr;

extern "C" {

char *VlGetEnv(const char *name) {
    const char *value = name && *name ? std::getenv(name) : nullptr;
    return VlCopyString(value);
}

char *VlGetDistDir(void) {
    if (!theDistDir) {
        const char *value = std::getenv("VELMORA");
        if (!value) return nullptr;
        theDistDir = StrDup(value);
        size_t n = std::strlen(theDistDir);
        if (n > 0 && (theDistDir[n - 1] == '/' || theDistDir[n - 1] == '\\'))
            theDistDir[n - 1] = '\0';
    }
    return theDistDir;
}

char *GetVelmoraDir(void) {
    return StrDup(VlGetDistDir());
}

void VlResetDistDir(void) {
    std::free(theDistDir);
    theDistDir = nullptr;
}

} // extern "C"
