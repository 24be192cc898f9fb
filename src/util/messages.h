/* Messages: the printer every layer reports through, the error dialog of the
 * graphical builder (a line on standard output here) and the message catalog,
 * which in this build answers with the default text itself. */
#ifndef VELMORA_UTIL_MESSAGES_H
#define VELMORA_UTIL_MESSAGES_H

#ifdef __cplusplus
extern "C" {
#endif

/* Writes text to standard output as it is (no newline added); null writes nothing. */
void VlPrintError(const char *text);
/* Writes the message and a newline to standard output; null writes "(null)". */
void VlGUIError(const char *message);

/* Message catalog. */
void VlCatOpen(void);
void VlCatClose(void);
const char *VlCatGets(int set, int number, const char *defaultText); /* the default text itself */
const char *GCatb(int set, int number);                              /* always " " */

#ifdef __cplusplus
}
#endif

#endif
