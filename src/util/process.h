/* Running shell commands: blocking with the output captured in a temporary
 * file, or in the background with the output read through a pipe; and the
 * quoting that keeps a file name from ever running as a command. */
#ifndef VELMORA_UTIL_PROCESS_H
#define VELMORA_UTIL_PROCESS_H

#include <stdio.h>

#ifdef __cplusplus
extern "C" {
#endif

int VlLaunchAndBlock(const char *command);
unsigned long VlLaunch(const char *command);
FILE *VlExecCaptureOutAndErr(const char *command);
int Vlpclose(FILE *stream);
long open_max(void);
void set_fl(int fd, int flags);
void clr_fl(int fd, int flags);
void ReadFromStdIn(void *stream, int *fdPtr, unsigned long *inputIdPtr);
void VlSetErrorTextWidget(void *widget);
void VlAppendToText(void *widget, const char *text);

/* A piece of a command line: the text itself when it holds only letters,
 * digits and ". _ - / + , : @ % =", else the text in single quotes (a quote
 * inside written '\''). Never null: a null text gives ''. */
char *VlShellQuote(const char *text);
/* For a piece that stands inside double quotes of a command line: $, `, "
 * and \ get a backslash in front. Never null. */
char *VlShellEscapeInDoubleQuotes(const char *text);

#ifdef __cplusplus
}
#endif

#endif
