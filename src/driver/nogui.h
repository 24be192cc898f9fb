/* What the command-line build puts in place of the graphical builder: the
 * error dialog (a line on standard output), the message catalog (the default
 * text itself) and the toolkit and editor entry points (they do nothing). */
#ifndef VELMORA_DRIVER_NOGUI_H
#define VELMORA_DRIVER_NOGUI_H

#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

void VlGUIError(const char *message);

/* Message catalog. */
void VlCatOpen(void);
void VlCatClose(void);
const char *VlCatGets(int set, int number, const char *defaultText); /* the default text itself */
const char *GCatb(int set, int number);                              /* always " " */

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

#ifdef __cplusplus
}
#endif

#endif
