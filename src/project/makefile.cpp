/* The project's makefile: the executable suffix that names the built program
 * (also part of the program's URL). */
#include "project/makefile.h"

#include "project/options.h"
#include "util/strings.h"

extern "C" {

char *VlProjGetExeSuffix(void) {
    char *suffix = VlProjGetOptionByCat("Makefile.", "exeSuffix");
    return suffix ? suffix : VlCopyString(".exe");
}

} // extern "C"
