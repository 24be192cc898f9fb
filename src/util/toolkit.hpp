/* The entry points of the graphical toolkit and of the interactive builder's
 * editors that the shared engine code calls (the output text area, input
 * handlers, binding editors, object types). The engine only declares them:
 * the program that links it supplies them, vlnogui with the do-nothing
 * substitutes of driver/nogui.cpp. Not part of the installed C interface. */
#ifndef VELMORA_UTIL_TOOLKIT_HPP
#define VELMORA_UTIL_TOOLKIT_HPP

#include "util/list.h"

extern "C" {

/* Binding editors and object types of the interactive builder. */
char *SgeGetObjTypeIdFromInt(int typeId); /* a new "Hello" */
int SgeValidateProcedure(SutList *binds); /* always 1 */
void BeRefreshSites(void *editor);
void BePopulateFromBindName(void *editor, const char *bindName);
void BeReset(void *editor);
void BeReturnBe(void *editor);
void WbRefreshChangedBindEditors(void);

/* Toolkit entry points; handles are plain pointers or numbers, always 0. */
void *XmStringCreateSimple(const char *text);
void XmStringFree(void *string);
void XmListDeleteAllItems(void *list);
void XmTextShowPosition(void *widget, long position);
long XmTextGetLastPosition(void *widget);
void XmTextInsert(void *widget, long position, const char *text);
void *XtWidgetToApplicationContext(void *widget);
unsigned long XtAppAddInput(void *context, int fd, void *condition,
                            void (*handler)(void *, int *, unsigned long *), void *clientData);
void XtRemoveInput(unsigned long inputId);
void XtVaSetValues(void *widget, ...);

} // extern "C"

#endif
