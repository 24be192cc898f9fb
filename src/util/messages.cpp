// The messages of the whole engine: VlPrintError writes a piece of a message
// as it stands, VlGUIError a whole line where the graphical builder would show
// a dialog, and the catalog lookups give back the English default text.
#include "util/messages.h"

#include <cstdio>

extern "C" {

void VlPrintError(const char *text) {
    if (text) std::fputs(text, stdout);
}

void VlGUIError(const char *message) {
    std::printf("%s\n", message ? message : "(null)");
}

void VlCatOpen(void) {}
void VlCatClose(void) {}
const char *VlCatGets(int, int, const char *defaultText) {
    return defaultText;
}
const char *GCatb(int, int) {
    static const char blank[] = " ";
    return blank;
}

} // extern "C"
