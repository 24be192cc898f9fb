/* Writing the project back to disk, and the record of recently used projects
 * that a front end with menus keeps. */
#include "project/writer.h"

#include <string>

#include "project/project.h"
#include "util/files.h"
#include "util/heap.hpp"

extern "C" {

void VlProjAddToMRU(void) {
    if (!theProj || !theProj->name) return;
    VlCharPtr dir(VlGetCurrentDir());
    if (!dir || !*dir) return;
    // The full path of the project file is what a menu would list; the
    // command-line build keeps no menu, so it goes no further.
    const std::string entry = std::string(dir.get()) + "/" + theProj->name + ".pj";
    (void)entry;
}

} // extern "C"
