// Project naming, relocation and the scripted runs. The two switches here
// decide whether the engine calls the distribution's read and write scripts
// around every file it touches, and whether CGI URLs are left to run time.
#include "project/naming.h"

#include <cstring>

#include "project/options.h"
#include "util/heap.hpp"

extern "C" {

int VlProjCallReadWriteScripts(void) {
    VlCharPtr value(VlProjGetOptionNoParse("Project.Call Read/Write Scripts"));
    return !value || strcmp(value.get(), "True") == 0 ? 1 : 0;
}

int VlProjRelocatable(void) {
    VlCharPtr value(VlProjGetOptionNoParse("Project.Relocatable Project"));
    return value && strcmp(value.get(), "True") == 0 ? 1 : 0;
}

} // extern "C"
