// The command-line build's stand-ins for the graphical builder. The shared
// code calls these where the builder would show a dialog, look a message up in
// its catalog, or drive a toolkit widget; here they print, pass the default
// text through, or do nothing.
#include "driver/nogui.h"

#include "util/strings.h"

#include <cstdio>

extern "C" {

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

// A fixed placeholder: binding identifiers built in this build carry "Hello".
char *SgeGetObjTypeIdFromInt(int) {
    return VlCopyString("Hello");
}
int SgeValidateProcedure(SutList *) {
    return 1;
}
void BeRefreshSites(void *) {}
void BePopulateFromBindName(void *, const char *) {}
void BeReset(void *) {}
void BeReturnBe(void *) {}
void WbRefreshChangedBindEditors(void) {}

void *XmStringCreateSimple(const char *) {
    return nullptr;
}
void XmStringFree(void *) {}
void XmListDeleteAllItems(void *) {}
void XmTextShowPosition(void *, long) {}
long XmTextGetLastPosition(void *) {
    return 0;
}
void XmTextInsert(void *, long, const char *) {}
void *XtWidgetToApplicationContext(void *) {
    return nullptr;
}
unsigned long XtAppAddInput(void *, int, void *, void (*)(void *, int *, unsigned long *), void *) {
    return 0;
}
void XtRemoveInput(unsigned long) {}
void XtVaSetValues(void *, ...) {}

} // extern "C"
