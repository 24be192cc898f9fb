// The command-line build's stand-ins for the graphical toolkit and the
// builder's editors (declared in util/toolkit.hpp): the shared code calls them
// where the builder would drive a widget or an editor; here they do nothing,
// answer with a null handle, or accept.
#include "util/toolkit.hpp"

#include "util/strings.h"

extern "C" {

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
