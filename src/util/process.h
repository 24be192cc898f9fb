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

/* The bytes a command line for VlLaunchAndBlock may take, names and the
 * argument vectors of the commands it runs included: the system's limit on
 * one argument (the whole line is one argument of the shell) and on all
 * arguments with the environment, less room for what VlLaunchAndBlock adds. */
long VlCommandLineRoom(void);

/* A piece of a command line: the text itself when it holds only letters,
 * digits and ". _ - / + , : @ % =", else the text in single quotes (a quote
 * inside written '\''). Never null: a null text gives ''. */
char *VlShellQuote(const char *text);
/* A file name as a piece of a command line: VlShellQuote's form, with "./"
 * put in front of a name that begins with "-", so that the command takes it
 * as a path and never as an option. Never null. */
char *VlShellQuoteName(const char *text);
/* For a piece that stands inside double quotes of a command line: $, `, "
 * and \ get a backslash in front. Never null. */
char *VlShellEscapeInDoubleQuotes(const char *text);

#ifdef __cplusplus
}
#endif

#endif
